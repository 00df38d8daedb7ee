// The published vocabulary: every format group with its formats, their properties, the
// look-up by id, and the name lists of channel types, colour spaces, profiles, blends and
// storage classes.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "testcolours.h"
#include "vorna/pixel/channeltype.h"
#include "vorna/pixel/colorprofile.h"
#include "vorna/pixel/colorspace.h"
#include "vorna/pixel/pixelblend.h"
#include "vorna/pixel/pixelstorage.h"

namespace vorna::pixel::test {
namespace {

struct ExpectedGroup {
  std::string member;
  std::string registry;
  std::vector<std::string> formats;
};

const std::vector<ExpectedGroup> kExpectedGroups = {
  {"rgb", "RGB", {"u8", "u16", "u32", "s32", "f16", "f32", "f64", "u444", "u555", "u565", "rgbe"}},
  {"rgba", "RGBA", {"u8", "u16", "u32", "s32", "f16", "f32", "f64"}},
  {"argb", "ARGB", {"u8", "u16", "f32", "f64", "u1555", "u4444"}},
  {"rgbx", "RGBX", {"u8"}},
  {"xrgb", "XRGB", {"u8"}},
  {"bgr", "BGR", {"u8", "u16", "f32", "u444", "u555", "u565"}},
  {"bgra", "BGRA", {"u8", "u16", "f16", "f32"}},
  {"abgr", "ABGR", {"u8", "u1555", "u4444"}},
  {"bgrx", "BGRX", {"u8"}},
  {"alpha", "ALPHA", {"u8", "u16", "f16", "f32", "f64"}},
  {"grey", "GREY", {"u8", "u16", "f16", "f32", "f64"}},
  {"agrey", "AGREY", {"u8", "u16", "f16", "f32", "f64"}},
  {"greya", "GREYA", {"u8", "u16", "f16", "f32", "f64"}},
  {"cmyk", "CMYK", {"u8", "u16", "f32"}},
  {"acmyk", "ACMYK", {"u8", "u16", "f32"}},
  {"cmyk_inv", "CMYK_INV", {"u8", "u16", "f32"}},
  {"acmyk_inv", "ACMYK_INV", {"u8", "u16", "f32"}},
  {"yuv", "YUV", {"i422a", "i422b"}},
  {"indexed", "Indexed",
   {"u1bit", "u2bit", "u3bit", "u4bit", "u5bit", "u6bit", "u7bit", "u8bit", "u16bit"}},
  {"dynamic", "Dynamic",
   {"RedU8", "RedU16", "RedU32", "RedS8", "RedS16", "RedS32", "RedF16", "RedF32", "RedGreenU8",
    "RedGreenU16", "RedGreenU32", "RedGreenS8", "RedGreenS16", "RedGreenS32", "RedGreenF16",
    "RedGreenF32"}},
};

// Includes `rgb` and `dynamic`, which are declared apart from the other groups.
TEST(PixelFormatCatalogue, HasEveryGroupWithItsFormatsInDeclarationOrder) {
  const auto groups = PixelFormatGroups();
  ASSERT_EQ(groups.size(), kExpectedGroups.size());
  size_t total = 0;
  for (size_t g = 0; g < groups.size(); ++g) {
    const ExpectedGroup& want = kExpectedGroups[g];
    EXPECT_EQ(groups[g].member, want.member);
    EXPECT_EQ(groups[g].id, "vorna.PixelFormats:" + want.member);
    EXPECT_EQ(groups[g].registry, "vorna.PixelFormats." + want.registry);
    ASSERT_EQ(groups[g].formats.size(), want.formats.size()) << want.member;
    for (size_t f = 0; f < want.formats.size(); ++f) {
      const PixelFormat& format = groups[g].formats[f];
      EXPECT_EQ(format.member, want.formats[f]);
      EXPECT_EQ(format.id, "vorna.PixelFormats." + want.registry + ":" + want.formats[f]);
      EXPECT_EQ(format.groupMember, want.member);
      EXPECT_EQ(format.registry, groups[g].registry);
      EXPECT_EQ(&format, &PixelFormats()[total++]);
    }
  }
  EXPECT_EQ(total, PixelFormats().size());
  EXPECT_EQ(total, 99u);
}

TEST(PixelFormatCatalogue, IdsAreExactAndDistinguishFormatsFromGroups) {
  const PixelFormat* bgr = FindPixelFormat("vorna.PixelFormats.BGR:u8");
  const PixelFormat* rgb = FindPixelFormat("vorna.PixelFormats.RGB:u8");
  ASSERT_NE(bgr, nullptr);
  ASSERT_NE(rgb, nullptr);
  EXPECT_NE(bgr, rgb);
  EXPECT_EQ(bgr->channelStore[0].type, ChannelType::Blue);
  EXPECT_EQ(rgb->channelStore[0].type, ChannelType::Red);

  EXPECT_EQ(FindPixelFormat("vorna.PixelFormats:bgr"), nullptr);
  EXPECT_EQ(FindPixelFormat("vorna.PixelFormats.bgr:u8"), nullptr);
  EXPECT_EQ(FindPixelFormat("BGR:u8"), nullptr);

  const PixelFormatGroup* group = FindPixelFormatGroup("vorna.PixelFormats:bgr");
  ASSERT_NE(group, nullptr);
  EXPECT_EQ(group->formats.data(), bgr);
  EXPECT_EQ(FindPixelFormatGroup("vorna.PixelFormats.BGR:u8"), nullptr);
  EXPECT_EQ(FindPixelFormatGroup("vorna.PixelFormats:BGR"), nullptr);
  EXPECT_NE(FindPixelFormatGroup("vorna.PixelFormats:dynamic"), nullptr);
}

// The channels tile the pixel without gaps or overlaps; only the YUV formats, which share
// chroma between two pixels, describe more bits than a pixel has.
TEST(PixelFormatCatalogue, ChannelsTileThePixel) {
  for (const PixelFormat& format : PixelFormats()) {
    SCOPED_TRACE(std::string(format.id));
    ASSERT_GE(format.channelCount, 1);
    if (format.colorSpace == ColorSpace::Yuv) continue;
    int32_t next = 0;
    for (const ImageChannel& channel : format.Channels()) {
      EXPECT_EQ(channel.offset, next);
      next += channel.bits;
    }
    EXPECT_EQ(next, format.bitsPerPixel);
    EXPECT_EQ(format.packedPixelCount, 1);
  }
}

TEST(PixelFormatCatalogue, FrameFormatsHaveTheirLayouts) {
  using enum ChannelType;
  const auto types = [](std::string_view id) {
    std::vector<ChannelType> result;
    for (const ImageChannel& channel : Format(id).Channels()) result.push_back(channel.type);
    return result;
  };
  EXPECT_EQ(types("vorna.PixelFormats.BGRX:u8"), (std::vector{Blue, Green, Red, Unused}));
  EXPECT_EQ(types("vorna.PixelFormats.RGBA:u8"), (std::vector{Red, Green, Blue, Alpha}));
  EXPECT_EQ(types("vorna.PixelFormats.BGR:u565"), (std::vector{Blue, Green, Red}));
  EXPECT_EQ(types("vorna.PixelFormats.YUV:i422a"), (std::vector{Grey, UvU, UvV}));
  EXPECT_EQ(types("vorna.PixelFormats.YUV:i422b"), (std::vector{Grey, UvV, UvU}));

  const PixelFormat& yuv = Format("vorna.PixelFormats.YUV:i422a");
  EXPECT_EQ(yuv.bitsPerPixel, 16);
  EXPECT_EQ(yuv.packedPixelCount, 2);
  EXPECT_EQ(Format("vorna.PixelFormats.BGR:u555").bitsPerPixel, 16);
  EXPECT_EQ(Format("vorna.PixelFormats.Indexed:u3bit").bitsPerPixel, 3);
  EXPECT_EQ(Format("vorna.PixelFormats.Dynamic:RedGreenS16").Channels()[1].dataType,
            ChannelDataType::Signed);
}

TEST(PixelFormatCatalogue, AlphaComesOnlyWithAnAlphaChannel) {
  EXPECT_TRUE(Format("vorna.PixelFormats.BGRA:u8").hasAlpha);
  EXPECT_TRUE(Format("vorna.PixelFormats.ARGB:u1555").hasAlpha);
  EXPECT_TRUE(Format("vorna.PixelFormats.AGREY:u8").hasAlpha);
  EXPECT_FALSE(Format("vorna.PixelFormats.BGRX:u8").hasAlpha);
  EXPECT_FALSE(Format("vorna.PixelFormats.YUV:i422a").hasAlpha);
}

TEST(PixelFormatCatalogue, ColourSpacesAndDefaultProfiles) {
  const auto expect = [](std::string_view id, ColorSpace space, ColorProfile profile) {
    EXPECT_EQ(Format(id).colorSpace, space) << id;
    EXPECT_EQ(Format(id).defaultColorProfile, profile) << id;
  };
  expect("vorna.PixelFormats.BGRX:u8", ColorSpace::Rgb, ColorProfile::Srgb);
  expect("vorna.PixelFormats.RGB:f16", ColorSpace::Rgb, ColorProfile::LinearRgb);
  expect("vorna.PixelFormats.RGBA:f32", ColorSpace::Rgb, ColorProfile::LinearRgb);
  expect("vorna.PixelFormats.RGB:rgbe", ColorSpace::Rgb, ColorProfile::LinearRgb);
  expect("vorna.PixelFormats.GREY:u8", ColorSpace::Grey, ColorProfile::Sgrey);
  expect("vorna.PixelFormats.AGREY:f64", ColorSpace::Grey, ColorProfile::LinearGrey);
  expect("vorna.PixelFormats.ALPHA:f32", ColorSpace::Alpha, ColorProfile::None);
  expect("vorna.PixelFormats.CMYK_INV:f32", ColorSpace::Cmyk, ColorProfile::Cmyk);
  expect("vorna.PixelFormats.YUV:i422b", ColorSpace::Yuv, ColorProfile::Yuv);
}

TEST(ImageVocabulary, NameListsAreComplete) {
  EXPECT_EQ(kChannelTypeNames.size(), 30u);
  EXPECT_EQ(kColorSpaceNames.size(), 5u);
  EXPECT_EQ(kColorProfileNames.size(), 7u);
  EXPECT_EQ(kPixelBlendNames.size(), 24u);
  EXPECT_EQ(kPixelStorageNames.size(), 5u);

  EXPECT_EQ(Name(ChannelType::CmykIC), "CMYK_iC");
  EXPECT_EQ(Name(ColorProfile::LinearGrey), "linear_grey");
}

}  // namespace
}  // namespace vorna::pixel::test
