// Reading and writing single pixels of the RGB-family row formats.
#pragma once

#include <cstdint>

#include "rgba8.h"

namespace vorna::pixel {

// Pixels of `Bytes` bytes with one byte per channel at the given indices; -1 for a channel
// the format lacks. `X` is a padding byte. A format without alpha reads as opaque.
template <int Bytes, int R, int G, int B, int A, int X>
struct BytePixel {
  static constexpr int kBytes = Bytes;
  static constexpr bool kYuv = false;
  static constexpr int kR = R, kG = G, kB = B, kA = A, kX = X;

  static Rgba8 Read(const uint8_t* p) {
    if constexpr (A >= 0) {
      return {p[R], p[G], p[B], p[A]};
    } else {
      return {p[R], p[G], p[B], 255};
    }
  }

  static void Write(uint8_t* p, Rgba8 c) {
    p[R] = c.r;
    p[G] = c.g;
    p[B] = c.b;
    if constexpr (A >= 0) p[A] = c.a;
    if constexpr (X >= 0) p[X] = 255;
  }
};

using Bgrx8 = BytePixel<4, 2, 1, 0, -1, 3>;
using Bgra8 = BytePixel<4, 2, 1, 0, 3, -1>;
using Bgr8 = BytePixel<3, 2, 1, 0, -1, -1>;
using Rgb8 = BytePixel<3, 0, 1, 2, -1, -1>;
using Rgba8Pixel = BytePixel<4, 0, 1, 2, 3, -1>;
using Rgbx8 = BytePixel<4, 0, 1, 2, -1, 3>;
using Xrgb8 = BytePixel<4, 1, 2, 3, -1, 0>;
using Argb8 = BytePixel<4, 1, 2, 3, 0, -1>;
using Abgr8 = BytePixel<4, 3, 2, 1, 0, -1>;

// An n-bit channel widened to 8 bits by repeating its top bits below it, so that 0 stays 0
// and the largest value becomes 255.
template <int Bits>
constexpr uint8_t ExpandBits(uint32_t value) {
  static_assert(Bits >= 4 && Bits < 8);
  return static_cast<uint8_t>((value << (8 - Bits)) | (value >> (2 * Bits - 8)));
}

// An 8-bit channel rounded to the nearest n-bit value; undoes ExpandBits exactly.
template <int Bits>
constexpr uint32_t NarrowBits(uint8_t value) {
  constexpr uint32_t kMax = (1u << Bits) - 1;
  return (value * kMax + 127) / 255;
}

// A little-endian 16-bit word: blue in the lowest 5 bits, green in the next `GreenBits`,
// red in the 5 above. The 555 layout leaves the top bit unused, written as 0.
template <int GreenBits>
struct Bgr16Pixel {
  static constexpr int kBytes = 2;
  static constexpr bool kYuv = false;
  static constexpr int kGreenShift = 5;
  static constexpr int kRedShift = 5 + GreenBits;
  static constexpr uint32_t kGreenMask = (1u << GreenBits) - 1;

  static Rgba8 Read(const uint8_t* p) {
    const uint32_t word = p[0] | (p[1] << 8);
    return {ExpandBits<5>((word >> kRedShift) & 31),
            ExpandBits<GreenBits>((word >> kGreenShift) & kGreenMask), ExpandBits<5>(word & 31),
            255};
  }

  static void Write(uint8_t* p, Rgba8 c) {
    const uint32_t word = (NarrowBits<5>(c.r) << kRedShift) |
                          (NarrowBits<GreenBits>(c.g) << kGreenShift) | NarrowBits<5>(c.b);
    p[0] = static_cast<uint8_t>(word);
    p[1] = static_cast<uint8_t>(word >> 8);
  }
};

using Bgr555 = Bgr16Pixel<5>;
using Bgr565 = Bgr16Pixel<6>;

}  // namespace vorna::pixel
