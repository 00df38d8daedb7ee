// A pixel format: how the pixels of one row are laid out in memory, and what they mean.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

#include "vorna/pixel/channeltype.h"
#include "vorna/pixel/colorprofile.h"
#include "vorna/pixel/colorspace.h"

namespace vorna::pixel {

// ACMYK has the most channels of all formats.
inline constexpr int32_t kMaxChannels = 5;

// Formats are published as `registry:member`, e.g. `vorna.PixelFormats.BGR:u8`, and belong to
// the group `vorna.PixelFormats:<groupMember>`, e.g. `vorna.PixelFormats:bgr`.
//
// Channels are listed in memory order: the byte order for byte-sized channels, from the
// lowest bit up for packed formats (`BGR:u565` has blue in bits 0-4, green in 5-10, red in
// 11-15, as a little-endian word). Unused bits are `Unused` channels, so that the channel
// bits add up to the bits of a pixel.
//
// The default colour profile follows the data: floating-point colour channels hold linear
// light (`linear_rgb`, `linear_grey`), integer ones are gamma encoded (`srgb`, `sgrey`); `rgbe`
// counts as linear. CMYK formats have `cmyk`, YUV `yuv`, alpha-only formats `none`.
//
// The 4:2:2 YUV formats keep two pixels in one 32-bit unit, Y0 C1 Y1 C2 in bytes, and report
// 16 bits per pixel with a packed pixel count of 2. Their channels describe the first pixel
// of the unit: luma as `Grey` at bit 0, then the chroma that follows it at bit 8 and the
// other at bit 24, with `UvU` standing for Cb and `UvV` for Cr.
struct PixelFormat {
  std::string_view id;
  std::string_view groupMember;
  std::string_view registry;
  std::string_view member;
  int32_t bitsPerPixel = 0;
  int32_t packedPixelCount = 1;
  std::array<ImageChannel, kMaxChannels> channelStore{};
  int32_t channelCount = 0;
  bool hasAlpha = false;
  ColorSpace colorSpace = ColorSpace::Rgb;
  ColorProfile defaultColorProfile = ColorProfile::None;

  constexpr std::span<const ImageChannel> Channels() const {
    return std::span<const ImageChannel>(channelStore).first(static_cast<size_t>(channelCount));
  }
};

// The bit offset of each channel within the pixel, in the order of `Channels()`. A row
// conversion is asked for with the offsets of both formats and accepts exactly the ones
// this gives back: the format's own layout, no reordered or partial channels.
struct ChannelOffsets {
  std::array<int32_t, kMaxChannels> bits{};
  int32_t count = 0;

  friend constexpr bool operator==(const ChannelOffsets&, const ChannelOffsets&) = default;
};

ChannelOffsets GetChannelOffsets(const PixelFormat& format);

// The bytes of a row of `width` pixels, rounded up to a multiple of `alignment` bytes
// (alignment 0 or 1: no rounding). Formats that pack several pixels in one unit count whole
// units. A width below 1 gives 0.
int64_t BytesPerLine(const PixelFormat& format, int64_t width, int64_t alignment);

}  // namespace vorna::pixel
