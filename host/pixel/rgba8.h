// The pixel every RGB-family conversion passes through.
#pragma once

#include <cstdint>

namespace vorna::pixel {

struct Rgba8 {
  uint8_t r, g, b, a;
};

}  // namespace vorna::pixel
