// The table of row conversions between the formats that frames travel in.
#include "vorna/pixel/convertpixels.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "rgbpixelcodecs.h"
#include "rowconverters.h"
#include "yuvpixelcodecs.h"

namespace vorna::pixel {
namespace {

// The ids and the codecs of the convertible formats, in the same order.
constexpr std::array<std::string_view, 13> kRowFormatIds = {
  "vorna.PixelFormats.BGRX:u8",   "vorna.PixelFormats.BGRA:u8",   "vorna.PixelFormats.BGR:u8",
  "vorna.PixelFormats.BGR:u555",  "vorna.PixelFormats.BGR:u565",  "vorna.PixelFormats.YUV:i422a",
  "vorna.PixelFormats.YUV:i422b", "vorna.PixelFormats.RGB:u8",    "vorna.PixelFormats.RGBA:u8",
  "vorna.PixelFormats.RGBX:u8",   "vorna.PixelFormats.XRGB:u8",   "vorna.PixelFormats.ARGB:u8",
  "vorna.PixelFormats.ABGR:u8",
};

template <class... Formats>
struct ConversionTable {
  static constexpr size_t kSize = sizeof...(Formats);
  using Row = std::array<ConvertPixelsFunc, kSize>;

  template <class Src>
  static constexpr Row From() {
    return {&ConvertRow<Src, Formats>...};
  }

  static constexpr std::array<Row, kSize> kFunctions = {From<Formats>()...};
};

using Conversions = ConversionTable<Bgrx8, Bgra8, Bgr8, Bgr555, Bgr565, Yuy2, Yvyu, Rgb8,
                                    Rgba8Pixel, Rgbx8, Xrgb8, Argb8, Abgr8>;

static_assert(Conversions::kSize == kRowFormatIds.size());

constexpr size_t kNotConvertible = kRowFormatIds.size();

size_t RowFormatIndex(const PixelFormat& format) {
  return static_cast<size_t>(std::find(kRowFormatIds.begin(), kRowFormatIds.end(), format.id) -
                             kRowFormatIds.begin());
}

}  // namespace

ConvertPixelsFunc GetConvertFunc(const PixelFormat& src, const PixelFormat& dst) {
  const size_t from = RowFormatIndex(src);
  const size_t to = RowFormatIndex(dst);
  if (from == kNotConvertible || to == kNotConvertible) return nullptr;
  return Conversions::kFunctions[from][to];
}

ConvertPixelsFunc GetConvertFunc(const PixelFormat& src, const ChannelOffsets& srcOffsets,
                                 const PixelFormat& dst, const ChannelOffsets& dstOffsets) {
  if (srcOffsets != GetChannelOffsets(src) || dstOffsets != GetChannelOffsets(dst)) {
    return nullptr;
  }
  return GetConvertFunc(src, dst);
}

}  // namespace vorna::pixel
