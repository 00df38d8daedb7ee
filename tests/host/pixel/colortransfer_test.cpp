// The transfer curves behind the colour profiles: which profiles convert, and the
// re-encoding of 8-bit values against reference points of the sRGB curve.
#include <gtest/gtest.h>

#include <vector>

#include "vorna/pixel/colortransfer.h"

namespace vorna::pixel {
namespace {

TEST(ColorTransfer, ProfilesFollowTheCurveOfTheirValues) {
  const struct {
    ColorProfile profile;
    Transfer transfer;
  } kCases[] = {
      {ColorProfile::Srgb, Transfer::Srgb},         {ColorProfile::Sgrey, Transfer::Srgb},
      {ColorProfile::Yuv, Transfer::Srgb},          {ColorProfile::LinearRgb, Transfer::Linear},
      {ColorProfile::LinearGrey, Transfer::Linear}, {ColorProfile::None, Transfer::None},
      {ColorProfile::Cmyk, Transfer::None},
  };
  for (const auto& c : kCases) EXPECT_EQ(TransferOf(c.profile), c.transfer) << Name(c.profile);
}

TEST(ColorTransfer, OnlyLinearAndSrgbConvertIntoEachOther) {
  EXPECT_EQ(FindTransferTable(Transfer::Srgb, Transfer::Srgb), nullptr);
  EXPECT_EQ(FindTransferTable(Transfer::None, Transfer::Srgb), nullptr);
  EXPECT_EQ(FindTransferTable(Transfer::Linear, Transfer::None), nullptr);
  EXPECT_NE(FindTransferTable(Transfer::Linear, Transfer::Srgb), nullptr);
  EXPECT_NE(FindTransferTable(Transfer::Srgb, Transfer::Linear), nullptr);
}

// Reference points: the ends, the steep start of the curve near black, half of
// linear light at 188 encoded, and the encoded middle grey at 21.6 % of linear light.
TEST(ColorTransfer, TablesMeetTheReferencePointsOfTheCurve) {
  const TransferTable& encode = *FindTransferTable(Transfer::Linear, Transfer::Srgb);
  const TransferTable& decode = *FindTransferTable(Transfer::Srgb, Transfer::Linear);
  const struct {
    uint8_t linear;
    uint8_t srgb;
  } kPoints[] = {{0, 0}, {1, 13}, {128, 188}, {55, 128}, {255, 255}};
  for (const auto& p : kPoints) {
    EXPECT_EQ(encode[p.linear], p.srgb) << int(p.linear);
    EXPECT_EQ(decode[p.srgb], p.linear) << int(p.srgb);
  }
  for (size_t i = 1; i < 256; ++i) {
    EXPECT_GE(encode[i], encode[i - 1]);
    EXPECT_GE(decode[i], decode[i - 1]);
    EXPECT_GE(encode[i], i) << "the encoded value lies above the line";
  }
}

TEST(ColorTransfer, ApplyingATableLeavesAlphaAlone) {
  const TransferTable& encode = *FindTransferTable(Transfer::Linear, Transfer::Srgb);
  std::vector<uint8_t> pixels = {128, 1, 0, 77, 255, 128, 1, 128};
  ApplyTransfer(pixels.data(), 2, encode);
  EXPECT_EQ(pixels, (std::vector<uint8_t>{188, 13, 0, 77, 255, 188, 13, 128}));
}

}  // namespace
}  // namespace vorna::pixel
