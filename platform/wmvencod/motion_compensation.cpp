#include "wmvencod/motion_compensation.h"

#include <algorithm>
#include <cstring>

namespace tessel::platform::wmv3 {
namespace {

// Interpolated rows reach this far beyond the picture; clipped vectors read at most
// 16 samples beyond it.
constexpr int kMargin = 24;
constexpr int kBandRows = 16;

uint8_t Clip(int value) { return static_cast<uint8_t>(std::clamp(value, 0, 255)); }

// The half-sample taps (-1, 9, 9, -1) over a, b, c, d.
int Taps(int a, int b, int c, int d) { return 9 * (b + c) - a - d; }

// Chroma: bilinear in eighths of a sample.
void Bilinear8(const uint8_t* source, ptrdiff_t stride, int fx, int fy, bool roundingControl, uint8_t* out) {
  int a = (8 - fx) * (8 - fy), b = fx * (8 - fy), c = (8 - fx) * fy, d = fx * fy;
  int round = roundingControl ? 28 : 32;
  for (int y = 0; y < 8; ++y) {
    const uint8_t* row = source + y * stride;
    const uint8_t* below = row + stride;
    for (int x = 0; x < 8; ++x)
      out[8 * y + x] =
          static_cast<uint8_t>((a * row[x] + b * row[x + 1] + c * below[x] + d * below[x + 1] + round) >> 6);
  }
}

}  // namespace

MotionVector ChromaVector(MotionVector luma) {
  auto component = [](int v) {
    int c = (v + ((v & 3) == 3 ? 1 : 0)) >> 1;
    // Fast UV motion compensation: odd quarter positions round towards zero.
    return c + (c < 0 ? (c & 1) : -(c & 1));
  };
  return {component(luma.x), component(luma.y)};
}

void HalfSamplePlanes::Allocate(int width, int height) {
  right_.Allocate(width, height);
  below_.Allocate(width, height);
  diagonal_.Allocate(width, height);
}

void HalfSamplePlanes::Use(const Plane& reference, bool roundingControl) {
  reference_ = &reference;
  roundingControl_ = roundingControl;
}

int HalfSamplePlanes::Bands() const { return (right_.Height() + 2 * kMargin + kBandRows - 1) / kBandRows; }

void HalfSamplePlanes::BuildBand(int band) {
  const Plane& s = *reference_;
  int rnd = roundingControl_ ? 1 : 0;
  int first = -kMargin + band * kBandRows;
  int last = std::min(first + kBandRows, s.Height() + kMargin);
  int left = -kMargin, right = s.Width() + kMargin;
  ptrdiff_t stride = s.Stride();
  // Vertical taps of each column, then the vertical pass of the diagonal phase (pictures
  // are at most 4096 samples wide); loops without branches so that they vectorise.
  constexpr int kSpan = 4096 + 2 * kMargin + 3;
  int16_t taps[kSpan];
  int16_t vertical[kSpan];
  int span = right - left + 3;
  for (int y = first; y < last; ++y) {
    const uint8_t* column = s.At(left - 1, y);
    for (int i = 0; i < span; ++i)
      taps[i] = static_cast<int16_t>(Taps(column[i - stride], column[i], column[i + stride], column[i + 2 * stride]));
    for (int i = 0; i < span; ++i) vertical[i] = static_cast<int16_t>((taps[i] + rnd) >> 1);
    const uint8_t* row = s.At(left, y);
    uint8_t* r = right_.At(left, y);
    uint8_t* b = below_.At(left, y);
    uint8_t* d = diagonal_.At(left, y);
    int width = right - left;
    for (int x = 0; x < width; ++x) b[x] = Clip((taps[x + 1] + 7 + rnd) >> 4);
    for (int x = 0; x < width; ++x) r[x] = Clip((Taps(row[x - 1], row[x], row[x + 1], row[x + 2]) + 8 - rnd) >> 4);
    for (int x = 0; x < width; ++x)
      d[x] = Clip((Taps(vertical[x], vertical[x + 1], vertical[x + 2], vertical[x + 3]) + 64 - rnd) >> 7);
  }
}

const Plane& HalfSamplePlanes::Phase(int dx, int dy) const {
  if (dx && dy) return diagonal_;
  if (dx) return right_;
  if (dy) return below_;
  return *reference_;
}

void PredictLuma(const HalfSamplePlanes& reference, int mbX, int mbY, MotionVector vector, uint8_t* out) {
  const Plane& phase = reference.Phase((vector.x >> 1) & 1, (vector.y >> 1) & 1);
  int x = std::clamp(mbX * 16 + (vector.x >> 2), -16, phase.Width());
  int y = std::clamp(mbY * 16 + (vector.y >> 2), -16, phase.Height());
  for (int row = 0; row < 16; ++row) std::memcpy(out + 16 * row, phase.At(x, y + row), 16);
}

void PredictMacroblock(const HalfSamplePlanes& luma, const FramePlanes& reference, int mbX, int mbY,
                       MotionVector vector, uint8_t* lumaOut, uint8_t* cb, uint8_t* cr) {
  PredictLuma(luma, mbX, mbY, vector, lumaOut);
  MotionVector chroma = ChromaVector(vector);
  const Plane& u = reference.planes[1];
  int x = std::clamp(mbX * 8 + (chroma.x >> 2), -8, u.Width());
  int y = std::clamp(mbY * 8 + (chroma.y >> 2), -8, u.Height());
  int fx = (chroma.x & 3) << 1, fy = (chroma.y & 3) << 1;
  Bilinear8(u.At(x, y), u.Stride(), fx, fy, luma.RoundingControl(), cb);
  Bilinear8(reference.planes[2].At(x, y), reference.planes[2].Stride(), fx, fy, luma.RoundingControl(), cr);
}

}  // namespace tessel::platform::wmv3
