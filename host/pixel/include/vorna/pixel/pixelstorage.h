// The names of the ways an image keeps its pixels.
#pragma once

#include <array>
#include <string_view>

namespace vorna::pixel {

// Published in the registry `vorna.ImagePixelStorageClasses` under these names, in this
// order. `deepimage` is the one that also offers the deep-image storage interface.
inline constexpr std::string_view kPixelStorageRegistry = "vorna.ImagePixelStorageClasses";

inline constexpr std::array<std::string_view, 5> kPixelStorageNames = {
  "normal", "planes", "nodata", "voxel", "deepimage",
};

}  // namespace vorna::pixel
