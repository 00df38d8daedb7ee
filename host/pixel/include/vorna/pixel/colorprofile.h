// The colour profiles a pixel format can name as its default.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace vorna::pixel {

// Published in the registry `vorna.ColorProfiles` under the names below, in this order.
enum class ColorProfile : uint8_t { None, Srgb, Sgrey, Cmyk, Yuv, LinearRgb, LinearGrey };

inline constexpr std::string_view kColorProfileRegistry = "vorna.ColorProfiles";

inline constexpr std::array<std::string_view, 7> kColorProfileNames = {
  "none", "srgb", "sgrey", "cmyk", "yuv", "linear_rgb", "linear_grey",
};

static_assert(static_cast<size_t>(ColorProfile::LinearGrey) + 1 == kColorProfileNames.size());

constexpr std::string_view Name(ColorProfile profile) {
  return kColorProfileNames[static_cast<size_t>(profile)];
}

}  // namespace vorna::pixel
