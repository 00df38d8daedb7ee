// One pixel of YUV: its own luma and the chroma of its pair.
#pragma once

#include <cstdint>

namespace vorna::pixel {

struct Yuv8 {
  uint8_t y, u, v;
};

// Luma of both pixels of a pair and their shared chroma.
struct YuvPair {
  uint8_t y0, y1, u, v;
};

}  // namespace vorna::pixel
