// Layout queries: channel offsets, bytes per line, and the offsets a conversion accepts.
#include <gtest/gtest.h>

#include "testcolours.h"

namespace vorna::pixel::test {
namespace {

ChannelOffsets Offsets(std::initializer_list<int32_t> bits) {
  ChannelOffsets offsets;
  for (int32_t b : bits) offsets.bits[offsets.count++] = b;
  return offsets;
}

TEST(ChannelOffsets, FollowTheMemoryOrderOfTheChannels) {
  EXPECT_EQ(GetChannelOffsets(Format("vorna.PixelFormats.BGRX:u8")), Offsets({0, 8, 16, 24}));
  EXPECT_EQ(GetChannelOffsets(Format("vorna.PixelFormats.BGR:u8")), Offsets({0, 8, 16}));
  EXPECT_EQ(GetChannelOffsets(Format("vorna.PixelFormats.BGR:u565")), Offsets({0, 5, 11}));
  EXPECT_EQ(GetChannelOffsets(Format("vorna.PixelFormats.BGR:u555")), Offsets({0, 5, 10, 15}));
  EXPECT_EQ(GetChannelOffsets(Format("vorna.PixelFormats.YUV:i422a")), Offsets({0, 8, 24}));
  EXPECT_EQ(GetChannelOffsets(Format("vorna.PixelFormats.ACMYK:u16")),
            Offsets({0, 16, 32, 48, 64}));
}

TEST(ChannelOffsets, ConversionAcceptsOnlyTheFormatsOwn) {
  const PixelFormat& bgrx = Format("vorna.PixelFormats.BGRX:u8");
  const PixelFormat& rgba = Format("vorna.PixelFormats.RGBA:u8");
  const ChannelOffsets own = GetChannelOffsets(bgrx);
  EXPECT_EQ(GetConvertFunc(bgrx, own, rgba, GetChannelOffsets(rgba)), GetConvertFunc(bgrx, rgba));
  EXPECT_NE(GetConvertFunc(bgrx, own, rgba, GetChannelOffsets(rgba)), nullptr);
  EXPECT_EQ(GetConvertFunc(bgrx, Offsets({16, 8, 0, 24}), rgba, GetChannelOffsets(rgba)), nullptr);
  EXPECT_EQ(GetConvertFunc(bgrx, own, rgba, Offsets({0, 8, 16})), nullptr);
}

TEST(Conversions, ExistBetweenTheFrameFormatsOnly) {
  size_t convertible = 0;
  for (const PixelFormat& from : PixelFormats()) {
    for (const PixelFormat& to : PixelFormats()) {
      if (GetConvertFunc(from, to) != nullptr) ++convertible;
    }
  }
  EXPECT_EQ(convertible, 13u * 13u);
  const PixelFormat& grey = Format("vorna.PixelFormats.GREY:u8");
  const PixelFormat& bgr = Format("vorna.PixelFormats.BGR:u8");
  EXPECT_EQ(GetConvertFunc(grey, bgr), nullptr);
  EXPECT_EQ(GetConvertFunc(bgr, Format("vorna.PixelFormats.BGR:u16")), nullptr);
}

TEST(BytesPerLine, RoundsToTheAlignment) {
  const PixelFormat& bgr = Format("vorna.PixelFormats.BGR:u8");
  EXPECT_EQ(BytesPerLine(bgr, 641, 1), 1923);
  EXPECT_EQ(BytesPerLine(bgr, 641, 4), 1924);
  EXPECT_EQ(BytesPerLine(bgr, 644, 4), 1932);
  EXPECT_EQ(BytesPerLine(bgr, 641, 0), 1923);
  EXPECT_EQ(BytesPerLine(bgr, 0, 4), 0);
  EXPECT_EQ(BytesPerLine(bgr, -3, 4), 0);
  EXPECT_EQ(BytesPerLine(Format("vorna.PixelFormats.BGRX:u8"), 3, 4), 12);
  EXPECT_EQ(BytesPerLine(Format("vorna.PixelFormats.BGR:u565"), 3, 1), 6);
  EXPECT_EQ(BytesPerLine(Format("vorna.PixelFormats.BGR:u565"), 3, 4), 8);
  EXPECT_EQ(BytesPerLine(Format("vorna.PixelFormats.RGB:f16"), 1, 4), 8);
}

TEST(BytesPerLine, CountsWholePairsAndWholeBytes) {
  const PixelFormat& yuv = Format("vorna.PixelFormats.YUV:i422a");
  EXPECT_EQ(BytesPerLine(yuv, 3, 1), 8);
  EXPECT_EQ(BytesPerLine(yuv, 4, 1), 8);
  EXPECT_EQ(BytesPerLine(yuv, 5, 4), 12);
  EXPECT_EQ(BytesPerLine(Format("vorna.PixelFormats.Indexed:u1bit"), 9, 1), 2);
  EXPECT_EQ(BytesPerLine(Format("vorna.PixelFormats.Indexed:u1bit"), 9, 4), 4);
  EXPECT_EQ(BytesPerLine(Format("vorna.PixelFormats.Indexed:u3bit"), 3, 1), 2);
}

}  // namespace
}  // namespace vorna::pixel::test
