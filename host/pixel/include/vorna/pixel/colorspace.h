// The colour spaces of pixel formats, each with the profiles it falls back to.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "vorna/pixel/colorprofile.h"

namespace vorna::pixel {

// Published in the registry `vorna.ColorSpaces` under the names below, in this order.
enum class ColorSpace : uint8_t { Rgb, Grey, Cmyk, Yuv, Alpha };

inline constexpr std::string_view kColorSpaceRegistry = "vorna.ColorSpaces";

inline constexpr std::array<std::string_view, 5> kColorSpaceNames = {
  "rgb", "grey", "cmyk", "yuv", "alpha",
};

static_assert(static_cast<size_t>(ColorSpace::Alpha) + 1 == kColorSpaceNames.size());

constexpr std::string_view Name(ColorSpace space) {
  return kColorSpaceNames[static_cast<size_t>(space)];
}

// The profile of gamma-encoded values in this space: what 8- and 16-bit integer pixels hold.
constexpr ColorProfile DefaultNonlinearProfile(ColorSpace space) {
  switch (space) {
    case ColorSpace::Rgb: return ColorProfile::Srgb;
    case ColorSpace::Grey: return ColorProfile::Sgrey;
    case ColorSpace::Cmyk: return ColorProfile::Cmyk;
    case ColorSpace::Yuv: return ColorProfile::Yuv;
    case ColorSpace::Alpha: return ColorProfile::None;
  }
  return ColorProfile::None;
}

// The profile of linear light in this space: what floating-point pixels hold. Spaces
// without a linear variant keep their nonlinear profile.
constexpr ColorProfile DefaultLinearProfile(ColorSpace space) {
  switch (space) {
    case ColorSpace::Rgb: return ColorProfile::LinearRgb;
    case ColorSpace::Grey: return ColorProfile::LinearGrey;
    default: return DefaultNonlinearProfile(space);
  }
}

}  // namespace vorna::pixel
