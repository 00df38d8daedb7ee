#include "wmvencod/motion_compensation.h"

#include <algorithm>

namespace tessel::platform::wmv3 {
namespace {

// Half-pel bilinear interpolation of a size x size block; dx, dy are 0 or 1.
void HalfPel(const uint8_t* source, ptrdiff_t stride, int size, int dx, int dy, bool roundingControl,
             uint8_t* out, int outStride) {
  int round2 = roundingControl ? 0 : 1;
  int round4 = roundingControl ? 1 : 2;
  for (int y = 0; y < size; ++y) {
    const uint8_t* row = source + y * stride;
    const uint8_t* below = row + stride;
    uint8_t* target = out + y * outStride;
    if (dx && dy) {
      for (int x = 0; x < size; ++x)
        target[x] = static_cast<uint8_t>((row[x] + row[x + 1] + below[x] + below[x + 1] + round4) >> 2);
    } else if (dx) {
      for (int x = 0; x < size; ++x) target[x] = static_cast<uint8_t>((row[x] + row[x + 1] + round2) >> 1);
    } else if (dy) {
      for (int x = 0; x < size; ++x) target[x] = static_cast<uint8_t>((row[x] + below[x] + round2) >> 1);
    } else {
      std::copy(row, row + size, target);
    }
  }
}

// Chroma: bilinear in eighths of a sample.
void Bilinear8(const uint8_t* source, ptrdiff_t stride, int fx, int fy, bool roundingControl, uint8_t* out) {
  int a = (8 - fx) * (8 - fy), b = fx * (8 - fy), c = (8 - fx) * fy, d = fx * fy;
  int round = roundingControl ? 28 : 32;
  for (int y = 0; y < 8; ++y) {
    const uint8_t* row = source + y * stride;
    const uint8_t* below = row + stride;
    for (int x = 0; x < 8; ++x)
      out[8 * y + x] = static_cast<uint8_t>((a * row[x] + b * row[x + 1] + c * below[x] + d * below[x + 1] + round) >> 6);
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

void PredictLuma(const Plane& reference, int mbX, int mbY, MotionVector vector, bool roundingControl, uint8_t* out) {
  int x = std::clamp(mbX * 16 + (vector.x >> 2), -16, reference.Width());
  int y = std::clamp(mbY * 16 + (vector.y >> 2), -16, reference.Height());
  HalfPel(reference.At(x, y), reference.Stride(), 16, (vector.x >> 1) & 1, (vector.y >> 1) & 1, roundingControl, out,
          16);
}

void PredictMacroblock(const FramePlanes& reference, int mbX, int mbY, MotionVector vector, bool roundingControl,
                       uint8_t* luma, uint8_t* cb, uint8_t* cr) {
  PredictLuma(reference.planes[0], mbX, mbY, vector, roundingControl, luma);
  MotionVector chroma = ChromaVector(vector);
  const Plane& u = reference.planes[1];
  int x = std::clamp(mbX * 8 + (chroma.x >> 2), -8, u.Width());
  int y = std::clamp(mbY * 8 + (chroma.y >> 2), -8, u.Height());
  int fx = (chroma.x & 3) << 1, fy = (chroma.y & 3) << 1;
  Bilinear8(u.At(x, y), u.Stride(), fx, fy, roundingControl, cb);
  Bilinear8(reference.planes[2].At(x, y), reference.planes[2].Stride(), fx, fy, roundingControl, cr);
}

}  // namespace tessel::platform::wmv3
