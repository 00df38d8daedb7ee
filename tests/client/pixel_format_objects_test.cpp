#include "vorna/translationunit.h"

#include <gtest/gtest.h>

#include <cstring>

#include "host_environment.h"
#include "vorna/errorbase.h"
#include "vorna/gfx_image_pixelformats.h"

namespace vorna {
namespace {

VORNA_DEFINE_OBJECT_USE(g_bgrGroup, "vorna.PixelFormats:bgr");
VORNA_DEFINE_OBJECT_USE(g_dynamicRedGreen, "vorna.PixelFormats.Dynamic:RedGreenF32");
VORNA_DEFINE_OBJECT_USE(g_lowerCaseHandlerName, "vorna.PixelFormats.bgr:u8");

TEST(PixelFormatObjectsTest, FormatsStandUnderTheirOwnIdsOnly) {
  PixelFormat bgr = GetPixelFormat(g_pixelFormatBGRu8);
  PixelFormat rgb = GetPixelFormat(g_pixelFormatRGBu8);
  ASSERT_TRUE(bgr);
  ASSERT_TRUE(rgb);
  EXPECT_NE(bgr.GetPointer(), rgb.GetPointer());
  EXPECT_NE(bgr.GetPointer(), GetPixelFormat(g_bgrGroup).GetPointer()) << "the group is another object";
  EXPECT_FALSE(GetPixelFormat(g_lowerCaseHandlerName)) << "ids compare exactly";
  EXPECT_TRUE(GetPixelFormat(g_dynamicRedGreen)) << "groups declared apart are there all the same";
  EXPECT_STREQ(bgr.GetShortName().GetCString(), "vorna.PixelFormats.BGR:u8");
}

TEST(PixelFormatObjectsTest, LayoutQueries) {
  PixelFormat bgrx = GetPixelFormat(g_pixelFormatBGRXu8);
  PixelFormat yuy2 = GetPixelFormat(g_pixelFormatYUVi422a);
  PixelFormat rgb565 = GetPixelFormat(g_pixelFormatBGRu565);
  EXPECT_EQ(bgrx.GetBitsPerPixel(), 32);
  EXPECT_EQ(yuy2.GetBitsPerPixel(), 16);
  EXPECT_EQ(yuy2.GetPackedPixelCount(), 2);
  EXPECT_EQ(bgrx.GetPackedPixelCount(), 1);
  EXPECT_EQ(GetPixelFormat(g_pixelFormatBGRu8).GetBytesPerLine(10, 4), 32);
  EXPECT_EQ(rgb565.GetChannelOffsets().count, 3);
  EXPECT_EQ(rgb565.GetChannelOffsets().bits[1], 5);
  EXPECT_TRUE(GetPixelFormat(g_pixelFormatBGRAu8).HasAlpha());
  EXPECT_STREQ(bgrx.GetDefaultColorProfile().GetName().GetCString(), "srgb");
  EXPECT_STREQ(yuy2.GetDefaultColorProfile().GetName().GetCString(), "yuv");
  EXPECT_EQ(GetColorProfile(g_srgbColorProfile).GetBlock(), bgrx.GetDefaultColorProfile().GetBlock());
}

TEST(PixelFormatObjectsTest, CreatePixGivesAZeroedBlockOfAlignedLines) {
  PixelFormat bgr = GetPixelFormat(g_pixelFormatBGRu8);
  Int before = vorna::host::GetLiveAllocationCount();
  Result<UChar*> pix = bgr.CreatePix(10, 3, 4);
  ASSERT_FALSE(pix.IsError());
  EXPECT_EQ(vorna::host::GetLiveAllocationCount(), before + 1);
  for (Int i = 0; i < 3 * 32; ++i) EXPECT_EQ(pix.GetValue()[i], 0);
  System::Free(pix.GetValue());
  EXPECT_TRUE(IsErrorOfClass(bgr.CreatePix(1 << 30, 1 << 30, 4).GetError(), g_OutOfMemoryErrorObject));
  EXPECT_TRUE(IsErrorOfClass(bgr.CreatePix(-1, 3, 4).GetError(), g_IllegalArgumentErrorObject));
}

TEST(PixelFormatObjectsTest, ConversionsComeFromTheTargetFormat) {
  PixelFormat bgrx = GetPixelFormat(g_pixelFormatBGRXu8);
  PixelFormat rgba = GetPixelFormat(g_pixelFormatRGBAu8);
  Result<ConvertPixelFunc> convert =
      rgba.GetConvertPixelFunc(bgrx, bgrx.GetChannelOffsets(), rgba.GetChannelOffsets(), nullptr, nullptr);
  ASSERT_FALSE(convert.IsError());
  ASSERT_NE(convert.GetValue(), nullptr);
  const UChar source[8] = {1, 2, 3, 0, 10, 20, 30, 0};
  UChar target[8] = {};
  convert.GetValue()(target, source + 4, 2, -32);
  const UChar expected[8] = {30, 20, 10, 255, 3, 2, 1, 255};
  EXPECT_EQ(std::memcmp(target, expected, 8), 0) << "read backwards with a step of minus one pixel";
  PixelFormat grey = GetPixelFormat(g_dynamicRedGreen);
  Result<ConvertPixelFunc> none =
      rgba.GetConvertPixelFunc(grey, grey.GetChannelOffsets(), rgba.GetChannelOffsets(), nullptr, nullptr);
  ASSERT_FALSE(none.IsError());
  EXPECT_EQ(none.GetValue(), nullptr) << "no conversion is a null function, not an error";
}

}  // namespace
}  // namespace vorna
