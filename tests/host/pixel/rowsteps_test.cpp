// How conversions walk their source and where they stop writing: repeated pixels, odd
// counts, YUV read with other steps than its own, copies along a step.
#include <gtest/gtest.h>

#include <vector>

#include "testcolours.h"

namespace vorna::pixel::test {
namespace {

constexpr const char* kRgb = "vorna.PixelFormats.RGB:u8";
constexpr const char* kBgrx = "vorna.PixelFormats.BGRX:u8";
constexpr const char* kYuy2 = "vorna.PixelFormats.YUV:i422a";
constexpr const char* kYvyu = "vorna.PixelFormats.YUV:i422b";

using Bytes = std::vector<uint8_t>;

// A step of 0 fills a row with one pixel: how black padding is made.
TEST(RowSteps, StepZeroRepeatsOnePixel) {
  const Bytes black(6, 0);
  Bytes bgrx(4 * 5, 0x55);
  Converter(kRgb, kBgrx)(bgrx.data(), black.data(), 5, 0);
  for (int i = 0; i < 5; ++i) EXPECT_EQ(Bytes(bgrx.begin() + i * 4, bgrx.begin() + i * 4 + 4), (Bytes{0, 0, 0, 255}));

  Bytes yuy2(2 * 4, 0x55);
  Converter(kRgb, kYuy2)(yuy2.data(), black.data(), 4, 0);
  EXPECT_EQ(yuy2, (Bytes{16, 128, 16, 128, 16, 128, 16, 128}));
}

TEST(RowSteps, NoPixelsWriteNothing) {
  const Bytes src(8, 0);
  Bytes dst(8, 0x55);
  for (const char* from : {kRgb, kYuy2}) {
    for (const char* to : {kBgrx, kYuy2}) {
      Converter(from, to)(dst.data(), src.data(), 0, 24);
      EXPECT_EQ(dst, Bytes(8, 0x55)) << from << " to " << to;
    }
  }
}

// An odd last pixel of YUV writes its own two bytes only: luma and the chroma byte next to it.
TEST(RowSteps, OddCountIntoYuvStopsAtTheLastPixel) {
  const Bytes rgb = {255, 0, 0, 255, 0, 0, 0, 0, 255};  // red, red, blue
  Bytes yuy2(8, 0x55);
  Converter(kRgb, kYuy2)(yuy2.data(), rgb.data(), 3, 24);
  EXPECT_EQ(yuy2, (Bytes{81, 90, 81, 240, 41, 240, 0x55, 0x55}));

  Bytes yvyu(8, 0x55);
  Converter(kRgb, kYvyu)(yvyu.data(), rgb.data(), 3, 24);
  EXPECT_EQ(yvyu, (Bytes{81, 240, 81, 90, 41, 110, 0x55, 0x55}));
}

TEST(RowSteps, OddCountFromYuvTakesTheLastPixelFromItsPair) {
  const Bytes yuy2 = {16, 128, 235, 128, 81, 90, 145, 240};
  Bytes rgb(9, 0x55);
  Converter(kYuy2, kRgb)(rgb.data(), yuy2.data(), 3, 16);
  EXPECT_EQ(rgb, (Bytes{0, 0, 0, 255, 255, 255, 254, 0, 0}));
}

// Pairs P0 P1 P2 with distinct luma and chroma; a YUV-to-YUV conversion shows which luma
// and which pairs' chroma each pixel was taken from.
const Bytes kThreePairs = {10, 100, 11, 200, 20, 110, 21, 210, 30, 120, 31, 220};

TEST(RowSteps, YuvReadBackwardsTakesEachPixelFromItsPair) {
  Bytes out(10, 0x55);
  // From the first pixel of P2 backwards: P2 first, P1 second, P1 first, P0 second, P0 first.
  Converter(kYuy2, kYuy2)(out.data(), kThreePairs.data() + 8, 5, -16);
  EXPECT_EQ(out, (Bytes{30, 115, 21, 215, 20, 105, 11, 205, 10, 100}));
}

TEST(RowSteps, YuvReadDownAColumnTakesTheFirstPixelOfEachRow) {
  // Rows of one pair each, 4 bytes apart: every pixel is the first of its row's pair.
  Bytes out(6, 0x55);
  Converter(kYuy2, kYvyu)(out.data(), kThreePairs.data(), 3, 32);
  EXPECT_EQ(out, (Bytes{10, 205, 20, 105, 30, 220}));
}

// A format to itself copies every byte of each pixel, padding included, along any step.
TEST(RowSteps, CopyAlongAStepKeepsEveryByte) {
  const Bytes bgrx = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};
  Bytes out(12, 0x55);
  Converter(kBgrx, kBgrx)(out.data(), bgrx.data() + 8, 3, -32);
  EXPECT_EQ(out, (Bytes{9, 10, 11, 12, 5, 6, 7, 8, 1, 2, 3, 4}));
}

}  // namespace
}  // namespace vorna::pixel::test
