// The 16-bit BGR formats: bit layout, widening by bit replication, narrowing to nearest.
#include <gtest/gtest.h>

#include <array>
#include <cstdlib>

#include "testcolours.h"

namespace vorna::pixel::test {
namespace {

constexpr const char* kRgb = "vorna.PixelFormats.RGB:u8";
constexpr const char* k555 = "vorna.PixelFormats.BGR:u555";
constexpr const char* k565 = "vorna.PixelFormats.BGR:u565";

std::array<uint8_t, 3> WordToRgb(const char* format, uint16_t word) {
  const uint8_t bytes[2] = {static_cast<uint8_t>(word), static_cast<uint8_t>(word >> 8)};
  std::array<uint8_t, 3> rgb{};
  Converter(format, kRgb)(rgb.data(), bytes, 1, 16);
  return rgb;
}

uint16_t RgbToWord(const char* format, std::array<uint8_t, 3> rgb) {
  uint8_t bytes[2] = {};
  Converter(kRgb, format)(bytes, rgb.data(), 1, 24);
  return static_cast<uint16_t>(bytes[0] | bytes[1] << 8);
}

using Rgb = std::array<uint8_t, 3>;

TEST(Packed565, ChannelsSitBlueLowRedHigh) {
  EXPECT_EQ(WordToRgb(k565, 0x001F), (Rgb{0, 0, 255}));
  EXPECT_EQ(WordToRgb(k565, 0x07E0), (Rgb{0, 255, 0}));
  EXPECT_EQ(WordToRgb(k565, 0xF800), (Rgb{255, 0, 0}));
  EXPECT_EQ(RgbToWord(k565, {255, 0, 0}), 0xF800);
  EXPECT_EQ(RgbToWord(k565, {0, 255, 0}), 0x07E0);
  EXPECT_EQ(RgbToWord(k565, {0, 0, 255}), 0x001F);
}

TEST(Packed555, ChannelsSitBlueLowRedHighTopBitUnused) {
  EXPECT_EQ(WordToRgb(k555, 0x001F), (Rgb{0, 0, 255}));
  EXPECT_EQ(WordToRgb(k555, 0x03E0), (Rgb{0, 255, 0}));
  EXPECT_EQ(WordToRgb(k555, 0x7C00), (Rgb{255, 0, 0}));
  EXPECT_EQ(WordToRgb(k555, 0x8000), (Rgb{0, 0, 0}));
  EXPECT_EQ(RgbToWord(k555, {255, 255, 255}), 0x7FFF);
}

TEST(PackedRgb, WideningRepeatsTheTopBits) {
  // 5 bits 10000 -> 10000100, 6 bits 100000 -> 10000010.
  EXPECT_EQ(WordToRgb(k565, 16 << 11 | 32 << 5 | 16), (Rgb{132, 130, 132}));
  EXPECT_EQ(WordToRgb(k555, 16 << 10 | 16 << 5 | 16), (Rgb{132, 132, 132}));
  // 00001 -> 00001000, 000001 -> 00000100.
  EXPECT_EQ(WordToRgb(k565, 1 << 11 | 1 << 5 | 1), (Rgb{8, 4, 8}));
}

TEST(PackedRgb, EveryWordSurvivesARoundTrip) {
  for (uint32_t word = 0; word <= 0xFFFF; ++word) {
    const auto w = static_cast<uint16_t>(word);
    ASSERT_EQ(RgbToWord(k565, WordToRgb(k565, w)), w);
    ASSERT_EQ(RgbToWord(k555, WordToRgb(k555, w)), w & 0x7FFF);
  }
}

// Every 8-bit value lands on the representable value closest to it.
TEST(PackedRgb, NarrowingPicksTheNearestLevel) {
  for (int v = 0; v < 256; ++v) {
    const auto value = static_cast<uint8_t>(v);
    const Rgb back = WordToRgb(k565, RgbToWord(k565, {value, value, value}));
    for (int level = 0; level < 32; ++level) {
      const uint16_t word = static_cast<uint16_t>(level << 11 | level);
      const Rgb other = WordToRgb(k565, word);
      EXPECT_LE(std::abs(back[0] - v), std::abs(other[0] - v)) << v;
    }
    for (int level = 0; level < 64; ++level) {
      const Rgb other = WordToRgb(k565, static_cast<uint16_t>(level << 5));
      EXPECT_LE(std::abs(back[1] - v), std::abs(other[1] - v)) << v;
    }
  }
}

}  // namespace
}  // namespace vorna::pixel::test
