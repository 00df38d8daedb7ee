// The names of the ways one layer of pixels is blended onto another.
#pragma once

#include <array>
#include <string_view>

namespace vorna::pixel {

// Published in the registry `vorna.ImagePixelBlends` under these names, in this order.
inline constexpr std::string_view kPixelBlendRegistry = "vorna.ImagePixelBlends";

inline constexpr std::array<std::string_view, 24> kPixelBlendNames = {
  "normal", "darken", "lighten", "multiply", "screen", "lineardodge", "add", "dissolve",
  "difference", "passfolder", "hue", "saturation", "color", "luminance", "overlay",
  "hardlight", "softlight", "colorburn", "colordodge", "exclusion", "stamp", "linearburn",
  "pinlight", "hardmix",
};

}  // namespace vorna::pixel
