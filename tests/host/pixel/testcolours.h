// Reference pixels for the conversion tests: a small set of colours, and an encoder and
// decoder of the frame formats written independently of the library, in floating point.
// Also the look-ups by id that every pixel test uses.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "vorna/pixel/convertpixels.h"
#include "vorna/pixel/pixelformatcatalogue.h"

namespace vorna::pixel::test {

struct Colour {
  int r, g, b, a;
};

inline constexpr Colour kBlack{0, 0, 0, 255};
inline constexpr Colour kWhite{255, 255, 255, 255};
inline constexpr Colour kRed{255, 0, 0, 255};
inline constexpr Colour kGreen{0, 255, 0, 255};
inline constexpr Colour kBlue{0, 0, 255, 255};
inline constexpr Colour kGrey{128, 128, 128, 255};

// The convertible formats by id.
inline const std::vector<std::string> kFrameFormats = {
  "vorna.PixelFormats.BGRX:u8",   "vorna.PixelFormats.BGRA:u8",  "vorna.PixelFormats.BGR:u8",
  "vorna.PixelFormats.BGR:u555",  "vorna.PixelFormats.BGR:u565", "vorna.PixelFormats.YUV:i422a",
  "vorna.PixelFormats.YUV:i422b", "vorna.PixelFormats.RGB:u8",   "vorna.PixelFormats.RGBA:u8",
  "vorna.PixelFormats.RGBX:u8",   "vorna.PixelFormats.XRGB:u8",  "vorna.PixelFormats.ARGB:u8",
  "vorna.PixelFormats.ABGR:u8",
};

// The catalogue's format of an id; a missing one fails the test.
const PixelFormat& Format(std::string_view id);

// The library's conversion between two formats given by id.
ConvertPixelsFunc Converter(std::string_view from, std::string_view to);

bool IsYuv(std::string_view id);
bool HasAlpha(std::string_view id);
int BytesPerPixel(std::string_view id);

// How far a channel may be off after passing through the format: 5- and 6-bit channels, which
// Encode truncates, and the rounding of YUV.
int Tolerance(std::string_view id);

// Pixels in the format. Padding is filled with junk (X bytes 0x11, the top bit of u555 set)
// that a conversion must not take for data. YUV takes each pair's chroma from its first pixel.
std::vector<uint8_t> Encode(std::string_view id, const std::vector<Colour>& pixels);

// Pixel i of a contiguous row in the format; formats without alpha decode as opaque.
Colour Decode(std::string_view id, const uint8_t* row, int64_t i);

// Whether the padding of pixel i is what a conversion writes: X 255, the top bit of u555 0.
bool PaddingIsClean(std::string_view id, const uint8_t* row, int64_t i);

// BT.601 limited range in double precision, rounded to nearest.
int ReferenceLuma(Colour c);
int ReferenceCb(Colour c);
int ReferenceCr(Colour c);

}  // namespace vorna::pixel::test
