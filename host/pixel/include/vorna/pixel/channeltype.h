// The channel types a pixel format is made of, and how one channel of a format is stored.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace vorna::pixel {

// Published in the registry `vorna.ImageChannelTypes` under the names below, in this order.
enum class ChannelType : uint8_t {
  Red, Green, Blue, Grey, Alpha,
  CmykC, CmykM, CmykY, CmykK,
  CmykIC, CmykIM, CmykIY, CmykIK,
  Depth, DepthBack, MaterialId, NodeId, UvU, UvV, Normal, RealPix, Coverage, Bg,
  NodeRenderId, Transparency, Velocity, Weight, Mask, Unused, Unknown,
};

inline constexpr std::string_view kChannelTypeRegistry = "vorna.ImageChannelTypes";

inline constexpr std::array<std::string_view, 30> kChannelTypeNames = {
  "Red", "Green", "Blue", "Grey", "Alpha",
  "CMYK_C", "CMYK_M", "CMYK_Y", "CMYK_K",
  "CMYK_iC", "CMYK_iM", "CMYK_iY", "CMYK_iK",
  "Depth", "DepthBack", "MaterialId", "NodeId", "UvU", "UvV", "Normal", "RealPix", "Coverage", "BG",
  "NodeRenderId", "Transparency", "Velocity", "Weight", "Mask", "Unused", "Unknown",
};

static_assert(static_cast<size_t>(ChannelType::Unknown) + 1 == kChannelTypeNames.size());

constexpr std::string_view Name(ChannelType type) {
  return kChannelTypeNames[static_cast<size_t>(type)];
}

enum class ChannelDataType : uint8_t { Unsigned, Signed, Float };

// One channel inside a pixel format: its type, how it is stored and where. `offset` is the
// bit position of the channel inside the pixel: bytes count in memory order, and within a
// packed little-endian word bit 0 is the lowest bit of the first byte.
struct ImageChannel {
  ChannelType type = ChannelType::Unknown;
  ChannelDataType dataType = ChannelDataType::Unsigned;
  int32_t bits = 0;
  int32_t offset = 0;

  friend constexpr bool operator==(const ImageChannel&, const ImageChannel&) = default;
};

}  // namespace vorna::pixel
