// YUV arithmetic as seen through the conversions: BT.601 limited range, rounded to nearest.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <vector>

#include "testcolours.h"

namespace vorna::pixel::test {
namespace {

std::vector<uint8_t> RgbToYuy2(const std::vector<Colour>& pixels) {
  const std::vector<uint8_t> rgb = Encode("vorna.PixelFormats.RGB:u8", pixels);
  std::vector<uint8_t> yuv(pixels.size() * 2);
  Converter("vorna.PixelFormats.RGB:u8", "vorna.PixelFormats.YUV:i422a")(
      yuv.data(), rgb.data(), static_cast<int64_t>(pixels.size()), 24);
  return yuv;
}

std::vector<uint8_t> Yuy2ToRgb(const std::vector<uint8_t>& yuv) {
  std::vector<uint8_t> rgb(yuv.size() / 2 * 3);
  Converter("vorna.PixelFormats.YUV:i422a", "vorna.PixelFormats.RGB:u8")(
      rgb.data(), yuv.data(), static_cast<int64_t>(yuv.size() / 2), 16);
  return rgb;
}

struct Reference {
  Colour colour;
  uint8_t y, u, v;
};

// Standard values for limited-range BT.601.
const Reference kReferences[] = {
  {kBlack, 16, 128, 128}, {kWhite, 235, 128, 128}, {kGrey, 126, 128, 128},
  {kRed, 81, 90, 240},    {kGreen, 145, 54, 34},   {kBlue, 41, 240, 110},
};

TEST(Bt601, EncodesReferenceColoursExactly) {
  for (const Reference& ref : kReferences) {
    const std::vector<uint8_t> yuv = RgbToYuy2({ref.colour, ref.colour});
    EXPECT_EQ(yuv, (std::vector<uint8_t>{ref.y, ref.u, ref.y, ref.v}))
        << ref.colour.r << "," << ref.colour.g << "," << ref.colour.b;
  }
}

// Within one, and exact for the greys.
TEST(Bt601, DecodesReferenceValues) {
  for (const Reference& ref : kReferences) {
    const std::vector<uint8_t> rgb = Yuy2ToRgb({ref.y, ref.u, ref.y, ref.v});
    const int tolerance = ref.u == 128 && ref.v == 128 ? 0 : 1;
    for (int i = 0; i < 2; ++i) {
      EXPECT_NEAR(rgb[i * 3 + 0], ref.colour.r, tolerance);
      EXPECT_NEAR(rgb[i * 3 + 1], ref.colour.g, tolerance);
      EXPECT_NEAR(rgb[i * 3 + 2], ref.colour.b, tolerance);
    }
  }
}

TEST(Bt601, OutOfRangeValuesClampInsteadOfWrapping) {
  EXPECT_EQ(Yuy2ToRgb({255, 255, 255, 255}), (std::vector<uint8_t>{255, 125, 255, 255, 125, 255}));
  EXPECT_EQ(Yuy2ToRgb({0, 0, 0, 0}), (std::vector<uint8_t>{0, 136, 0, 0, 136, 0}));
}

TEST(Bt601, PairSharesTheAverageOfItsChroma) {
  const std::vector<uint8_t> yuv = RgbToYuy2({kRed, kBlue});
  EXPECT_EQ(yuv[0], 81);
  EXPECT_EQ(yuv[2], 41);
  EXPECT_NEAR(yuv[1], (90 + 240) / 2, 1);
  EXPECT_NEAR(yuv[3], (240 + 110) / 2, 1);
}

// The opaque colours of a grid over the RGB cube, step apart in each channel.
std::vector<Colour> CubeGrid(int step) {
  std::vector<Colour> colours;
  for (int r = 0; r < 256; r += step)
    for (int g = 0; g < 256; g += step)
      for (int b = 0; b < 256; b += step) colours.push_back({r, g, b, 255});
  return colours;
}

TEST(Bt601, MatchesTheReferenceFormulaAcrossTheCube) {
  for (const Colour& c : CubeGrid(15)) {
    const std::vector<uint8_t> yuv = RgbToYuy2({c, c});
    EXPECT_NEAR(yuv[0], ReferenceLuma(c), 1) << c.r << "," << c.g << "," << c.b;
    EXPECT_NEAR(yuv[1], ReferenceCb(c), 1) << c.r << "," << c.g << "," << c.b;
    EXPECT_NEAR(yuv[3], ReferenceCr(c), 1) << c.r << "," << c.g << "," << c.b;
  }
}

TEST(Bt601, RgbSurvivesARoundTripThroughYuv) {
  int worst = 0;
  for (const Colour& c : CubeGrid(5)) {
    const std::vector<uint8_t> rgb = Yuy2ToRgb(RgbToYuy2({c, c}));
    worst = std::max({worst, std::abs(rgb[0] - c.r), std::abs(rgb[1] - c.g), std::abs(rgb[2] - c.b)});
  }
  EXPECT_LE(worst, 2);
}

}  // namespace
}  // namespace vorna::pixel::test
