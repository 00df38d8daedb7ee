#include "testcolours.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace vorna::pixel::test {
namespace {

// Memory order of the byte frame formats, one letter per byte: the group name of their id,
// as in "vorna.PixelFormats.BGRX:u8". Empty for the other frame formats.
std::string_view ByteLayout(std::string_view id) {
  constexpr std::string_view prefix = "vorna.PixelFormats.";
  constexpr std::string_view suffix = ":u8";
  if (!id.starts_with(prefix) || !id.ends_with(suffix)) return "";
  return id.substr(prefix.size(), id.size() - prefix.size() - suffix.size());
}

int GreenBits(std::string_view id) { return id.ends_with("u565") ? 6 : 5; }

bool IsPacked16(std::string_view id) { return id.ends_with("u555") || id.ends_with("u565"); }

// Byte index of U and V in a pair.
int UIndex(std::string_view id) { return id.ends_with("i422a") ? 1 : 3; }
int VIndex(std::string_view id) { return id.ends_with("i422a") ? 3 : 1; }

int Channel(const Colour& c, char letter) {
  switch (letter) {
    case 'R': return c.r;
    case 'G': return c.g;
    case 'B': return c.b;
    case 'A': return c.a;
    default: return 0x11;
  }
}

int RoundClamp(double v) { return std::clamp(static_cast<int>(std::lround(v)), 0, 255); }

uint8_t Byte(int v) { return static_cast<uint8_t>(v); }

void EncodeBytes(std::string_view layout, const Colour& c, std::vector<uint8_t>& out) {
  for (char letter : layout) out.push_back(Byte(Channel(c, letter)));
}

void EncodePacked16(std::string_view id, const Colour& c, std::vector<uint8_t>& out) {
  const int greenBits = GreenBits(id);
  int word = (c.r >> 3) << (5 + greenBits) | (c.g >> (8 - greenBits)) << 5 | (c.b >> 3);
  if (greenBits == 5) word |= 0x8000;
  out.push_back(Byte(word & 0xff));
  out.push_back(Byte(word >> 8));
}

void EncodeYuvPair(std::string_view id, const Colour& c0, const Colour& c1,
                   std::vector<uint8_t>& out) {
  uint8_t pair[4];
  pair[0] = Byte(ReferenceLuma(c0));
  pair[2] = Byte(ReferenceLuma(c1));
  pair[UIndex(id)] = Byte(ReferenceCb(c0));
  pair[VIndex(id)] = Byte(ReferenceCr(c0));
  out.insert(out.end(), pair, pair + 4);
}

Colour DecodeYuv(int y, int cb, int cr) {
  const double luma = (y - 16) * 255.0 / 219.0;
  const double u = (cb - 128) * 255.0 / 224.0;
  const double v = (cr - 128) * 255.0 / 224.0;
  return {RoundClamp(luma + 1.402 * v),
          RoundClamp(luma - 1.772 * 0.114 / 0.587 * u - 1.402 * 0.299 / 0.587 * v),
          RoundClamp(luma + 1.772 * u), 255};
}

int Expand(int value, int bits) { return value * 255 / ((1 << bits) - 1); }

}  // namespace

const PixelFormat& Format(std::string_view id) {
  const PixelFormat* format = FindPixelFormat(id);
  EXPECT_NE(format, nullptr) << id;
  return *format;
}

ConvertPixelsFunc Converter(std::string_view from, std::string_view to) {
  return GetConvertFunc(Format(from), Format(to));
}

bool IsYuv(std::string_view id) { return id.starts_with("vorna.PixelFormats.YUV"); }

bool HasAlpha(std::string_view id) { return ByteLayout(id).find('A') != std::string_view::npos; }

int BytesPerPixel(std::string_view id) {
  const std::string_view layout = ByteLayout(id);
  return layout.empty() ? 2 : static_cast<int>(layout.size());
}

int Tolerance(std::string_view id) {
  if (IsPacked16(id)) return 8;
  return IsYuv(id) ? 2 : 0;
}

int ReferenceLuma(Colour c) {
  return RoundClamp(16 + 219.0 * (0.299 * c.r + 0.587 * c.g + 0.114 * c.b) / 255.0);
}

int ReferenceCb(Colour c) {
  const double luma = 0.299 * c.r + 0.587 * c.g + 0.114 * c.b;
  return RoundClamp(128 + 224.0 * (c.b - luma) / 1.772 / 255.0);
}

int ReferenceCr(Colour c) {
  const double luma = 0.299 * c.r + 0.587 * c.g + 0.114 * c.b;
  return RoundClamp(128 + 224.0 * (c.r - luma) / 1.402 / 255.0);
}

std::vector<uint8_t> Encode(std::string_view id, const std::vector<Colour>& pixels) {
  std::vector<uint8_t> out;
  for (size_t i = 0; i < pixels.size(); ++i) {
    if (IsYuv(id)) {
      EncodeYuvPair(id, pixels[i], pixels[std::min(i + 1, pixels.size() - 1)], out);
      ++i;
    } else if (IsPacked16(id)) {
      EncodePacked16(id, pixels[i], out);
    } else {
      EncodeBytes(ByteLayout(id), pixels[i], out);
    }
  }
  return out;
}

Colour Decode(std::string_view id, const uint8_t* row, int64_t i) {
  if (IsYuv(id)) {
    const uint8_t* pair = row + (i / 2) * 4;
    return DecodeYuv(pair[(i % 2) * 2], pair[UIndex(id)], pair[VIndex(id)]);
  }
  if (IsPacked16(id)) {
    const int word = row[i * 2] | row[i * 2 + 1] << 8;
    const int greenBits = GreenBits(id);
    return {Expand((word >> (5 + greenBits)) & 31, 5),
            Expand((word >> 5) & ((1 << greenBits) - 1), greenBits), Expand(word & 31, 5), 255};
  }
  const std::string_view layout = ByteLayout(id);
  const uint8_t* p = row + i * static_cast<int64_t>(layout.size());
  Colour c{0, 0, 0, 255};
  for (size_t k = 0; k < layout.size(); ++k) {
    if (layout[k] == 'R') c.r = p[k];
    if (layout[k] == 'G') c.g = p[k];
    if (layout[k] == 'B') c.b = p[k];
    if (layout[k] == 'A') c.a = p[k];
  }
  return c;
}

bool PaddingIsClean(std::string_view id, const uint8_t* row, int64_t i) {
  if (id == "vorna.PixelFormats.BGR:u555") return (row[i * 2 + 1] & 0x80) == 0;
  const std::string_view layout = ByteLayout(id);
  const size_t x = layout.find('X');
  return x == std::string_view::npos || row[i * static_cast<int64_t>(layout.size()) + x] == 255;
}

}  // namespace vorna::pixel::test
