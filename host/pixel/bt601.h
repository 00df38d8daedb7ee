// BT.601 between 8-bit RGB and limited-range YUV (luma 16-235, chroma 16-240), in 16-bit
// fixed point with rounding to nearest.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>

#include "rgba8.h"
#include "yuv8.h"

namespace vorna::pixel::bt601 {

constexpr double kKr = 0.299;
constexpr double kKb = 0.114;
constexpr double kKg = 1.0 - kKr - kKb;
constexpr double kLumaScale = 219.0 / 255.0;
constexpr double kChromaScale = 224.0 / 255.0;
constexpr int kShift = 16;

constexpr int32_t Fixed(double value) {
  const double scaled = value * (1 << kShift);
  return static_cast<int32_t>(scaled < 0 ? scaled - 0.5 : scaled + 0.5);
}

// RGB to YUV. Green's chroma weights are whatever makes a grey pixel's chroma exactly 128.
constexpr int32_t kYr = Fixed(kLumaScale * kKr);
constexpr int32_t kYg = Fixed(kLumaScale * kKg);
constexpr int32_t kYb = Fixed(kLumaScale * kKb);
constexpr int32_t kUr = Fixed(-kChromaScale * 0.5 * kKr / (1 - kKb));
constexpr int32_t kUb = Fixed(kChromaScale * 0.5);
constexpr int32_t kUg = -(kUr + kUb);
constexpr int32_t kVr = Fixed(kChromaScale * 0.5);
constexpr int32_t kVb = Fixed(-kChromaScale * 0.5 * kKb / (1 - kKr));
constexpr int32_t kVg = -(kVr + kVb);

// YUV to RGB.
constexpr int32_t kLuma = Fixed(1 / kLumaScale);
constexpr int32_t kRv = Fixed(2 * (1 - kKr) / kChromaScale);
constexpr int32_t kGu = Fixed(2 * (1 - kKb) * kKb / kKg / kChromaScale);
constexpr int32_t kGv = Fixed(2 * (1 - kKr) * kKr / kKg / kChromaScale);
constexpr int32_t kBu = Fixed(2 * (1 - kKb) / kChromaScale);

constexpr int32_t kHalf = 1 << (kShift - 1);

constexpr uint8_t Luma(Rgba8 c) {
  return static_cast<uint8_t>((kYr * c.r + kYg * c.g + kYb * c.b + (16 << kShift) + kHalf) >>
                              kShift);
}

static_assert(Luma({0, 0, 0, 0}) == 16 && Luma({255, 255, 255, 0}) == 235);

// The chroma of two pixels: the average of their chroma, from the sums of their components
// so that it is rounded once.
constexpr YuvPair EncodePair(Rgba8 p0, Rgba8 p1) {
  const int32_t r = p0.r + p1.r;
  const int32_t g = p0.g + p1.g;
  const int32_t b = p0.b + p1.b;
  constexpr int32_t kOffset = (128 << (kShift + 1)) + (1 << kShift);
  return {Luma(p0), Luma(p1),
          static_cast<uint8_t>((kUr * r + kUg * g + kUb * b + kOffset) >> (kShift + 1)),
          static_cast<uint8_t>((kVr * r + kVg * g + kVb * b + kOffset) >> (kShift + 1))};
}

constexpr YuvPair EncodePair(Yuv8 p0, Yuv8 p1) {
  return {p0.y, p1.y, static_cast<uint8_t>((p0.u + p1.u + 1) >> 1),
          static_cast<uint8_t>((p0.v + p1.v + 1) >> 1)};
}

constexpr Yuv8 Encode(Rgba8 c) {
  const YuvPair pair = EncodePair(c, c);
  return {pair.y0, pair.u, pair.v};
}

constexpr Yuv8 Encode(Yuv8 c) { return c; }

// What a chroma pair adds to each component, before scaling back.
struct ChromaTerms {
  int32_t r, g, b;
};

constexpr ChromaTerms TermsOf(uint8_t u, uint8_t v) {
  const int32_t cb = u - 128;
  const int32_t cr = v - 128;
  return {kRv * cr + kHalf, kHalf - kGu * cb - kGv * cr, kBu * cb + kHalf};
}

constexpr int32_t LumaTerm(uint8_t y) { return kLuma * (y - 16); }

// Clamping to 0-255 by a table, which is faster than comparing in the hot loop. Decoded
// components before clamping lie within about -280..540; the table covers that and more.
constexpr int32_t kClampBias = 384;
constexpr int32_t kClampSize = 1024;

constexpr std::array<uint8_t, kClampSize> kClampTable = [] {
  std::array<uint8_t, kClampSize> table{};
  for (int32_t i = 0; i < kClampSize; ++i) {
    table[i] = static_cast<uint8_t>(std::clamp(i - kClampBias, 0, 255));
  }
  return table;
}();

constexpr uint8_t Clamp(int32_t scaled) { return kClampTable[(scaled >> kShift) + kClampBias]; }

// The sums are linear in Y, U and V, so their extremes lie at the corners of the cube.
constexpr bool ClampTableCoversEveryInput() {
  for (int corner = 0; corner < 8; ++corner) {
    const ChromaTerms terms = TermsOf(corner & 2 ? 255 : 0, corner & 4 ? 255 : 0);
    const int32_t luma = LumaTerm(corner & 1 ? 255 : 0);
    for (int32_t sum : {luma + terms.r, luma + terms.g, luma + terms.b}) {
      const int32_t index = (sum >> kShift) + kClampBias;
      if (index < 0 || index >= kClampSize) return false;
    }
  }
  return true;
}

static_assert(ClampTableCoversEveryInput());

constexpr Rgba8 Decode(uint8_t y, ChromaTerms terms) {
  const int32_t luma = LumaTerm(y);
  return {Clamp(luma + terms.r), Clamp(luma + terms.g), Clamp(luma + terms.b), 255};
}

constexpr Rgba8 Decode(Yuv8 c) { return Decode(c.y, TermsOf(c.u, c.v)); }

constexpr Rgba8 Decode(Rgba8 c) { return c; }

}  // namespace vorna::pixel::bt601
