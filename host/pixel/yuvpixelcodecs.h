// Reading and writing the 4:2:2 YUV row formats, which keep two pixels in four bytes:
// Y0 C1 Y1 C2.
#pragma once

#include <cstdint>

#include "yuv8.h"

namespace vorna::pixel {

// `UIndex` and `VIndex` are the bytes of the chroma within a pair: 1 and 3 or 3 and 1.
template <int UIndex, int VIndex>
struct Yuv422Pixel {
  static constexpr int kBytes = 2;
  static constexpr bool kYuv = true;
  static constexpr int kUIndex = UIndex;
  static constexpr int kVIndex = VIndex;

  // The pixel whose 2-byte slot holds the byte at `offset` from `row`, where `row` starts a
  // pair: even slots are first pixels, odd slots second ones, on either side of `row`.
  static Yuv8 ReadAt(const uint8_t* row, int64_t offset) {
    const int64_t slot = offset >> 1;
    const uint8_t* pair = row + (slot >> 1) * 4;
    return {pair[(slot & 1) * 2], pair[UIndex], pair[VIndex]};
  }

  static void WritePair(uint8_t* p, YuvPair pair) {
    p[0] = pair.y0;
    p[2] = pair.y1;
    p[UIndex] = pair.u;
    p[VIndex] = pair.v;
  }

  // A last pixel without a partner: its luma and the chroma byte next to it.
  static void WriteSingle(uint8_t* p, Yuv8 c) {
    p[0] = c.y;
    p[1] = UIndex == 1 ? c.u : c.v;
  }
};

using Yuy2 = Yuv422Pixel<1, 3>;
using Yvyu = Yuv422Pixel<3, 1>;

}  // namespace vorna::pixel
