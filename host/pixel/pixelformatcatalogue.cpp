// The table of all published pixel formats, built at compile time.
#include "vorna/pixel/pixelformatcatalogue.h"

#include <algorithm>
#include <array>
#include <initializer_list>

namespace vorna::pixel {
namespace {

using enum ChannelType;
constexpr auto U = ChannelDataType::Unsigned;
constexpr auto S = ChannelDataType::Signed;
constexpr auto F = ChannelDataType::Float;

struct FormatNames {
  std::string_view id;
  std::string_view groupMember;
  std::string_view registry;
  std::string_view member;
};

#define VORNA_FORMAT_NAMES(GROUP, REGISTRY, MEMBER)                                   \
  FormatNames {                                                                        \
    "vorna.PixelFormats." REGISTRY ":" MEMBER, GROUP, "vorna.PixelFormats." REGISTRY, MEMBER \
  }

constexpr bool IsColour(ChannelType type) {
  return type != Alpha && type != Unused && type != Unknown;
}

// Floating-point colour channels hold linear light; everything else is gamma encoded.
constexpr ColorProfile DefaultProfileOf(const PixelFormat& format) {
  const auto channels = format.Channels();
  const bool linear = std::any_of(channels.begin(), channels.end(), [](const ImageChannel& c) {
    return c.dataType == F && IsColour(c.type);
  });
  return linear ? DefaultLinearProfile(format.colorSpace)
                : DefaultNonlinearProfile(format.colorSpace);
}

constexpr PixelFormat Finish(PixelFormat format) {
  const auto channels = format.Channels();
  format.hasAlpha = std::any_of(channels.begin(), channels.end(),
                                [](const ImageChannel& c) { return c.type == Alpha; });
  format.defaultColorProfile = DefaultProfileOf(format);
  return format;
}

constexpr PixelFormat Named(FormatNames names, ColorSpace space) {
  PixelFormat format;
  format.id = names.id;
  format.groupMember = names.groupMember;
  format.registry = names.registry;
  format.member = names.member;
  format.colorSpace = space;
  return format;
}

// Channels in memory order, one size each, laid one after the other from bit 0.
constexpr PixelFormat Packed(FormatNames names, ColorSpace space,
                             std::initializer_list<ChannelType> order, ChannelDataType type,
                             std::initializer_list<int32_t> bits) {
  PixelFormat format = Named(names, space);
  const auto* size = bits.begin();
  for (ChannelType channel : order) {
    format.channelStore[format.channelCount++] = {channel, type, *size, format.bitsPerPixel};
    format.bitsPerPixel += *size;
    if (bits.size() > 1) ++size;
  }
  return Finish(format);
}

// Channels in memory order, all of one size and type.
constexpr PixelFormat Uniform(FormatNames names, ColorSpace space,
                              std::initializer_list<ChannelType> order, ChannelDataType type,
                              int32_t bits) {
  return Packed(names, space, order, type, {bits});
}

// Two pixels in 32 bits: Y0 C1 Y1 C2, with C1 and C2 the chroma types in memory order.
constexpr PixelFormat Yuv422(FormatNames names, ChannelType first, ChannelType second) {
  PixelFormat format = Named(names, ColorSpace::Yuv);
  format.bitsPerPixel = 16;
  format.packedPixelCount = 2;
  format.channelStore[0] = {Grey, U, 8, 0};
  format.channelStore[1] = {first, U, 8, 8};
  format.channelStore[2] = {second, U, 8, 24};
  format.channelCount = 3;
  return Finish(format);
}

// Red, green and blue mantissas with a shared exponent in the fourth byte: high dynamic
// range, so linear light although every byte is an unsigned integer.
constexpr PixelFormat Rgbe(FormatNames names) {
  PixelFormat format = Uniform(names, ColorSpace::Rgb, {Red, Green, Blue, Unknown}, U, 8);
  format.defaultColorProfile = ColorProfile::LinearRgb;
  return format;
}

constexpr auto kRgb = ColorSpace::Rgb;
constexpr auto kGrey = ColorSpace::Grey;
constexpr auto kCmyk = ColorSpace::Cmyk;
constexpr auto kAlpha = ColorSpace::Alpha;

#define F_RGB(M) VORNA_FORMAT_NAMES("rgb", "RGB", M), kRgb, {Red, Green, Blue}
#define F_RGBA(M) VORNA_FORMAT_NAMES("rgba", "RGBA", M), kRgb, {Red, Green, Blue, Alpha}
#define F_ARGB(M) VORNA_FORMAT_NAMES("argb", "ARGB", M), kRgb, {Alpha, Red, Green, Blue}
#define F_BGR(M) VORNA_FORMAT_NAMES("bgr", "BGR", M), kRgb, {Blue, Green, Red}
#define F_BGRA(M) VORNA_FORMAT_NAMES("bgra", "BGRA", M), kRgb, {Blue, Green, Red, Alpha}
#define F_ABGR(M) VORNA_FORMAT_NAMES("abgr", "ABGR", M), kRgb, {Alpha, Blue, Green, Red}
#define F_ALPHA(M) VORNA_FORMAT_NAMES("alpha", "ALPHA", M), kAlpha, {Alpha}
#define F_GREY(M) VORNA_FORMAT_NAMES("grey", "GREY", M), kGrey, {Grey}
#define F_AGREY(M) VORNA_FORMAT_NAMES("agrey", "AGREY", M), kGrey, {Alpha, Grey}
#define F_GREYA(M) VORNA_FORMAT_NAMES("greya", "GREYA", M), kGrey, {Grey, Alpha}
#define F_CMYK(M) VORNA_FORMAT_NAMES("cmyk", "CMYK", M), kCmyk, {CmykC, CmykM, CmykY, CmykK}
#define F_ACMYK(M) \
  VORNA_FORMAT_NAMES("acmyk", "ACMYK", M), kCmyk, {Alpha, CmykC, CmykM, CmykY, CmykK}
#define F_CMYK_INV(M) \
  VORNA_FORMAT_NAMES("cmyk_inv", "CMYK_INV", M), kCmyk, {CmykIC, CmykIM, CmykIY, CmykIK}
#define F_ACMYK_INV(M) \
  VORNA_FORMAT_NAMES("acmyk_inv", "ACMYK_INV", M), kCmyk, {Alpha, CmykIC, CmykIM, CmykIY, CmykIK}
#define F_INDEXED(M) VORNA_FORMAT_NAMES("indexed", "Indexed", M), kRgb, {Unknown}
#define F_RED(M) VORNA_FORMAT_NAMES("dynamic", "Dynamic", M), kRgb, {Red}
#define F_RED_GREEN(M) VORNA_FORMAT_NAMES("dynamic", "Dynamic", M), kRgb, {Red, Green}

constexpr std::array kFormats = {
  Uniform(F_RGB("u8"), U, 8),
  Uniform(F_RGB("u16"), U, 16),
  Uniform(F_RGB("u32"), U, 32),
  Uniform(F_RGB("s32"), S, 32),
  Uniform(F_RGB("f16"), F, 16),
  Uniform(F_RGB("f32"), F, 32),
  Uniform(F_RGB("f64"), F, 64),
  Packed(VORNA_FORMAT_NAMES("rgb", "RGB", "u444"), kRgb, {Red, Green, Blue, Unused}, U, {4, 4, 4, 4}),
  Packed(VORNA_FORMAT_NAMES("rgb", "RGB", "u555"), kRgb, {Red, Green, Blue, Unused}, U, {5, 5, 5, 1}),
  Packed(F_RGB("u565"), U, {5, 6, 5}),
  Rgbe(VORNA_FORMAT_NAMES("rgb", "RGB", "rgbe")),

  Uniform(F_RGBA("u8"), U, 8),
  Uniform(F_RGBA("u16"), U, 16),
  Uniform(F_RGBA("u32"), U, 32),
  Uniform(F_RGBA("s32"), S, 32),
  Uniform(F_RGBA("f16"), F, 16),
  Uniform(F_RGBA("f32"), F, 32),
  Uniform(F_RGBA("f64"), F, 64),

  Uniform(F_ARGB("u8"), U, 8),
  Uniform(F_ARGB("u16"), U, 16),
  Uniform(F_ARGB("f32"), F, 32),
  Uniform(F_ARGB("f64"), F, 64),
  Packed(F_ARGB("u1555"), U, {1, 5, 5, 5}),
  Packed(F_ARGB("u4444"), U, {4, 4, 4, 4}),

  Uniform(VORNA_FORMAT_NAMES("rgbx", "RGBX", "u8"), kRgb, {Red, Green, Blue, Unused}, U, 8),
  Uniform(VORNA_FORMAT_NAMES("xrgb", "XRGB", "u8"), kRgb, {Unused, Red, Green, Blue}, U, 8),

  Uniform(F_BGR("u8"), U, 8),
  Uniform(F_BGR("u16"), U, 16),
  Uniform(F_BGR("f32"), F, 32),
  Packed(VORNA_FORMAT_NAMES("bgr", "BGR", "u444"), kRgb, {Blue, Green, Red, Unused}, U, {4, 4, 4, 4}),
  Packed(VORNA_FORMAT_NAMES("bgr", "BGR", "u555"), kRgb, {Blue, Green, Red, Unused}, U, {5, 5, 5, 1}),
  Packed(F_BGR("u565"), U, {5, 6, 5}),

  Uniform(F_BGRA("u8"), U, 8),
  Uniform(F_BGRA("u16"), U, 16),
  Uniform(F_BGRA("f16"), F, 16),
  Uniform(F_BGRA("f32"), F, 32),

  Uniform(F_ABGR("u8"), U, 8),
  Packed(F_ABGR("u1555"), U, {1, 5, 5, 5}),
  Packed(F_ABGR("u4444"), U, {4, 4, 4, 4}),

  Uniform(VORNA_FORMAT_NAMES("bgrx", "BGRX", "u8"), kRgb, {Blue, Green, Red, Unused}, U, 8),

  Uniform(F_ALPHA("u8"), U, 8),
  Uniform(F_ALPHA("u16"), U, 16),
  Uniform(F_ALPHA("f16"), F, 16),
  Uniform(F_ALPHA("f32"), F, 32),
  Uniform(F_ALPHA("f64"), F, 64),

  Uniform(F_GREY("u8"), U, 8),
  Uniform(F_GREY("u16"), U, 16),
  Uniform(F_GREY("f16"), F, 16),
  Uniform(F_GREY("f32"), F, 32),
  Uniform(F_GREY("f64"), F, 64),

  Uniform(F_AGREY("u8"), U, 8),
  Uniform(F_AGREY("u16"), U, 16),
  Uniform(F_AGREY("f16"), F, 16),
  Uniform(F_AGREY("f32"), F, 32),
  Uniform(F_AGREY("f64"), F, 64),

  Uniform(F_GREYA("u8"), U, 8),
  Uniform(F_GREYA("u16"), U, 16),
  Uniform(F_GREYA("f16"), F, 16),
  Uniform(F_GREYA("f32"), F, 32),
  Uniform(F_GREYA("f64"), F, 64),

  Uniform(F_CMYK("u8"), U, 8),
  Uniform(F_CMYK("u16"), U, 16),
  Uniform(F_CMYK("f32"), F, 32),

  Uniform(F_ACMYK("u8"), U, 8),
  Uniform(F_ACMYK("u16"), U, 16),
  Uniform(F_ACMYK("f32"), F, 32),

  Uniform(F_CMYK_INV("u8"), U, 8),
  Uniform(F_CMYK_INV("u16"), U, 16),
  Uniform(F_CMYK_INV("f32"), F, 32),

  Uniform(F_ACMYK_INV("u8"), U, 8),
  Uniform(F_ACMYK_INV("u16"), U, 16),
  Uniform(F_ACMYK_INV("f32"), F, 32),

  Yuv422(VORNA_FORMAT_NAMES("yuv", "YUV", "i422a"), UvU, UvV),
  Yuv422(VORNA_FORMAT_NAMES("yuv", "YUV", "i422b"), UvV, UvU),

  Uniform(F_INDEXED("u1bit"), U, 1),
  Uniform(F_INDEXED("u2bit"), U, 2),
  Uniform(F_INDEXED("u3bit"), U, 3),
  Uniform(F_INDEXED("u4bit"), U, 4),
  Uniform(F_INDEXED("u5bit"), U, 5),
  Uniform(F_INDEXED("u6bit"), U, 6),
  Uniform(F_INDEXED("u7bit"), U, 7),
  Uniform(F_INDEXED("u8bit"), U, 8),
  Uniform(F_INDEXED("u16bit"), U, 16),

  Uniform(F_RED("RedU8"), U, 8),
  Uniform(F_RED("RedU16"), U, 16),
  Uniform(F_RED("RedU32"), U, 32),
  Uniform(F_RED("RedS8"), S, 8),
  Uniform(F_RED("RedS16"), S, 16),
  Uniform(F_RED("RedS32"), S, 32),
  Uniform(F_RED("RedF16"), F, 16),
  Uniform(F_RED("RedF32"), F, 32),
  Uniform(F_RED_GREEN("RedGreenU8"), U, 8),
  Uniform(F_RED_GREEN("RedGreenU16"), U, 16),
  Uniform(F_RED_GREEN("RedGreenU32"), U, 32),
  Uniform(F_RED_GREEN("RedGreenS8"), S, 8),
  Uniform(F_RED_GREEN("RedGreenS16"), S, 16),
  Uniform(F_RED_GREEN("RedGreenS32"), S, 32),
  Uniform(F_RED_GREEN("RedGreenF16"), F, 16),
  Uniform(F_RED_GREEN("RedGreenF32"), F, 32),
};

struct GroupEntry {
  std::string_view id;
  std::string_view member;
  std::string_view registry;
  size_t formatCount;
};

#define VORNA_GROUP(MEMBER, REGISTRY, COUNT) \
  GroupEntry { "vorna.PixelFormats:" MEMBER, MEMBER, "vorna.PixelFormats." REGISTRY, COUNT }

constexpr std::array kGroupEntries = {
  VORNA_GROUP("rgb", "RGB", 11),          VORNA_GROUP("rgba", "RGBA", 7),
  VORNA_GROUP("argb", "ARGB", 6),         VORNA_GROUP("rgbx", "RGBX", 1),
  VORNA_GROUP("xrgb", "XRGB", 1),         VORNA_GROUP("bgr", "BGR", 6),
  VORNA_GROUP("bgra", "BGRA", 4),         VORNA_GROUP("abgr", "ABGR", 3),
  VORNA_GROUP("bgrx", "BGRX", 1),         VORNA_GROUP("alpha", "ALPHA", 5),
  VORNA_GROUP("grey", "GREY", 5),         VORNA_GROUP("agrey", "AGREY", 5),
  VORNA_GROUP("greya", "GREYA", 5),       VORNA_GROUP("cmyk", "CMYK", 3),
  VORNA_GROUP("acmyk", "ACMYK", 3),       VORNA_GROUP("cmyk_inv", "CMYK_INV", 3),
  VORNA_GROUP("acmyk_inv", "ACMYK_INV", 3), VORNA_GROUP("yuv", "YUV", 2),
  VORNA_GROUP("indexed", "Indexed", 9),   VORNA_GROUP("dynamic", "Dynamic", 16),
};

// Every format sits in the run of its group, in the order of the groups.
constexpr bool GroupsCoverFormats() {
  size_t next = 0;
  for (const GroupEntry& group : kGroupEntries) {
    for (size_t i = 0; i < group.formatCount; ++i, ++next) {
      if (next >= kFormats.size() || kFormats[next].groupMember != group.member ||
          kFormats[next].registry != group.registry) {
        return false;
      }
    }
  }
  return next == kFormats.size();
}

static_assert(GroupsCoverFormats());

constexpr std::array<PixelFormatGroup, kGroupEntries.size()> MakeGroups() {
  std::array<PixelFormatGroup, kGroupEntries.size()> groups;
  size_t first = 0;
  for (size_t i = 0; i < kGroupEntries.size(); ++i) {
    const GroupEntry& entry = kGroupEntries[i];
    groups[i] = {entry.id, entry.member, entry.registry,
                 std::span(kFormats).subspan(first, entry.formatCount)};
    first += entry.formatCount;
  }
  return groups;
}

constexpr std::array kGroups = MakeGroups();

}  // namespace

std::span<const PixelFormatGroup> PixelFormatGroups() { return kGroups; }

std::span<const PixelFormat> PixelFormats() { return kFormats; }

const PixelFormat* FindPixelFormat(std::string_view id) {
  const auto found = std::find_if(kFormats.begin(), kFormats.end(),
                                  [id](const PixelFormat& format) { return format.id == id; });
  return found == kFormats.end() ? nullptr : &*found;
}

const PixelFormatGroup* FindPixelFormatGroup(std::string_view id) {
  const auto found = std::find_if(kGroups.begin(), kGroups.end(),
                                  [id](const PixelFormatGroup& group) { return group.id == id; });
  return found == kGroups.end() ? nullptr : &*found;
}

}  // namespace vorna::pixel
