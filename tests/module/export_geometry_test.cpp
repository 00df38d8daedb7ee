// The frame size, frame rate and pixel aspect as the export tells them to the platform.
#include <gtest/gtest.h>

#include <mfidl.h>

#include <limits>

#include "export_geometry.h"

namespace {

using tessel::AlignFrameSize;
using tessel::AspectToRatio;
using tessel::FpsToRatio;

TEST(ExportGeometry, WidthAlignsToSixteenInMpeg4AndToTwoElsewhere) {
  struct Case {
    const GUID* container;
    vorna::Int width, height, alignedWidth, alignedHeight;
  } cases[] = {
      {&MFTranscodeContainerType_MPEG4, 1921, 1081, 1936, 1082},
      {&MFTranscodeContainerType_ASF, 1921, 1081, 1922, 1082},
      {&MFTranscodeContainerType_3GP, 1921, 1081, 1922, 1082},
      {&GUID_NULL, 1921, 1081, 1922, 1082},
      {&MFTranscodeContainerType_MPEG4, 1920, 1080, 1920, 1080},
      {&MFTranscodeContainerType_MPEG4, 1922, 2, 1936, 2},
      {&MFTranscodeContainerType_MPEG4, 1, 1, 16, 2},
      {&MFTranscodeContainerType_ASF, 1, 1, 2, 2},
      {&MFTranscodeContainerType_ASF, 32000, 32000, 32000, 32000},
  };
  for (const Case& c : cases) {
    tessel::FrameSize aligned = AlignFrameSize(*c.container, c.width, c.height);
    EXPECT_EQ(aligned.width, c.alignedWidth) << c.width;
    EXPECT_EQ(aligned.height, c.alignedHeight) << c.height;
  }
}

TEST(ExportGeometry, FrameRatesKeepOnlyFactorsOfTen) {
  struct Case {
    double fps;
    vorna::Int64 numerator, denominator;
  } cases[] = {
      {25.0, 25, 1},      {29.97, 2997, 100}, {23.976, 23976, 1000}, {0.5, 5, 10},
      {60.0, 60, 1},      {0.0, 0, 1000000},  {-25.0, -25, 1},       {30000.0 / 1001, 29970029, 1000000},
  };
  for (const Case& c : cases) {
    tessel::WholeRatio ratio = FpsToRatio(c.fps);
    EXPECT_EQ(ratio.numerator, c.numerator) << c.fps;
    EXPECT_EQ(ratio.denominator, c.denominator) << c.fps;
  }
}

TEST(ExportGeometry, AspectsAreThousandthsReduced) {
  struct Case {
    double aspect;
    vorna::Int64 numerator, denominator;
  } cases[] = {
      {1.5, 3, 2},       {1.0667, 1067, 1000}, {16.0 / 15, 1067, 1000}, {1.0, 1, 1},
      {0.0, 0, 1},       {0.0004, 0, 1},       {0.0005, 1, 1000},       {-1.5, -3, 2},
      {2.5e6, 2500000, 1},
  };
  for (const Case& c : cases) {
    tessel::WholeRatio ratio = AspectToRatio(c.aspect);
    EXPECT_EQ(ratio.numerator, c.numerator) << c.aspect;
    EXPECT_EQ(ratio.denominator, c.denominator) << c.aspect;
  }
}

// Beyond 32 bits the divisor comes from the remainder loop in doubles; values are
// clamped to 1e15, so the ratio never overflows what a double counts exactly.
TEST(ExportGeometry, HugeAspectsStayExact) {
  tessel::WholeRatio big = AspectToRatio(3e9);
  EXPECT_EQ(big.numerator, 3000000000);
  EXPECT_EQ(big.denominator, 1);
  tessel::WholeRatio clamped = AspectToRatio(std::numeric_limits<double>::max());
  EXPECT_EQ(clamped.numerator, 1000000000000000);
  EXPECT_EQ(clamped.denominator, 1);
}

}  // namespace
