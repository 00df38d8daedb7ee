// The pixel format vocabulary as published objects: every format of the catalogue in
// the registry of its group (vorna.PixelFormats.BGR:u8), every group in
// vorna.PixelFormats (vorna.PixelFormats:bgr), and the channel types, colour spaces,
// blends and storage classes as named objects in their registries.
#include "vorna/translationunit.h"

#include "media/pixel_format_objects.h"

#include <string>

#include "loading/registries.h"
#include "media/color_profiles.h"
#include "vorna/component.h"
#include "vorna/gfx_image_pixelformats.h"
#include "vorna/pixel/channeltype.h"
#include "vorna/pixel/colorspace.h"
#include "vorna/pixel/convertpixels.h"
#include "vorna/pixel/pixelblend.h"
#include "vorna/pixel/pixelformatcatalogue.h"
#include "vorna/pixel/pixelstorage.h"

namespace vorna::host {

namespace {

ChannelOffsets ToClient(const pixel::ChannelOffsets& offsets) {
  ChannelOffsets out;
  out.count = offsets.count;
  for (Int32 i = 0; i < offsets.count && i < MAX_PIXEL_CHANNELS; ++i) out.bits[i] = offsets.bits[size_t(i)];
  return out;
}

pixel::ChannelOffsets FromClient(const ChannelOffsets& offsets) {
  pixel::ChannelOffsets out;
  out.count = offsets.count;
  for (Int32 i = 0; i < offsets.count && i < MAX_PIXEL_CHANNELS; ++i) out.bits[size_t(i)] = offsets.bits[i];
  return out;
}

class PixelFormatComponent : public Component<PixelFormatComponent> {
 public:
  static ClassRecord _classRecord;
  const pixel::PixelFormat* format = nullptr;

  Result<UChar*> CreatePix(Int width, Int height, Int alignment) const {
    if (width < 0 || height < 0 || alignment < 1) return RaiseError(g_IllegalArgumentErrorObject, VORNA_SOURCE_LOCATION);
    Int bytesPerLine = pixel::BytesPerLine(*format, width, alignment);
    if (height && bytesPerLine > MAXVALUE_INT / height) return CreateError(VORNA_SOURCE_LOCATION, 0);
    auto* block = static_cast<UChar*>(System::AllocClear(bytesPerLine * height, VORNA_SOURCE_LOCATION));
    if (!block) return CreateError(VORNA_SOURCE_LOCATION, 0);
    return block;
  }
  Int GetChannelCount() const { return format->channelCount; }
  ChannelOffsets GetChannelOffsets() const { return ToClient(pixel::GetChannelOffsets(*format)); }
  Int GetBitsPerPixel() const { return format->bitsPerPixel; }
  Int GetBytesPerLine(Int width, Int alignment) const { return pixel::BytesPerLine(*format, width, alignment); }
  Int GetPackedPixelCount() const { return format->packedPixelCount; }
  Bool HasAlpha() const { return format->hasAlpha; }
  ColorProfile GetDefaultColorProfile() const {
    return FindColorProfile(std::string(pixel::Name(format->defaultColorProfile)).c_str());
  }
  // Colour profiles play no part: the conversions are between layouts of one space.
  Result<ConvertPixelFunc> GetConvertPixelFunc(const PixelFormatInterface& source, const ChannelOffsets& sourceOffsets,
                                               const ChannelOffsets& targetOffsets, const ColorProfile*,
                                               const ColorProfile*) const {
    PixelFormatComponent* from = GetComponent<PixelFormatComponent>(source);
    if (!from) return ConvertPixelFunc(nullptr);
    return ConvertPixelFunc(
        pixel::GetConvertFunc(*from->format, FromClient(sourceOffsets), *format, FromClient(targetOffsets)));
  }
  Id GetShortName() const {
    Id id;
    id.Init(format->id.data(), Int(format->id.size()));
    return id;
  }

  Result<void> CopyFrom(const PixelFormatComponent& source) {
    format = source.format;
    return OK;
  }
};

}  // namespace

VORNA_COMPONENT_CLASS(PixelFormatComponent, g_pixelFormatClass, "vorna.PixelFormatBaseClass", "", nullptr,
                      &PixelFormatInterface::_record, VORNA_OVERRIDE(PixelFormatInterface, CreatePix),
                      VORNA_OVERRIDE(PixelFormatInterface, GetChannelCount),
                      VORNA_OVERRIDE(PixelFormatInterface, GetChannelOffsets),
                      VORNA_OVERRIDE(PixelFormatInterface, GetBitsPerPixel),
                      VORNA_OVERRIDE(PixelFormatInterface, GetBytesPerLine),
                      VORNA_OVERRIDE(PixelFormatInterface, GetPackedPixelCount),
                      VORNA_OVERRIDE(PixelFormatInterface, HasAlpha),
                      VORNA_OVERRIDE(PixelFormatInterface, GetDefaultColorProfile),
                      VORNA_OVERRIDE(PixelFormatInterface, GetConvertPixelFunc),
                      VORNA_OVERRIDE(PixelFormatInterface, GetShortName));

namespace {

void PublishFormat(const pixel::PixelFormat& format) {
  Result<ObjectRef> made = CreateObjectOfClass(GetDefinedClass(g_pixelFormatClass), VORNA_SOURCE_LOCATION);
  if (made.IsError()) return;
  GetComponent<PixelFormatComponent>(made.GetValue())->format = &format;
  CreateRegistry(std::string(format.registry).c_str());
  (void)Publish(Id(std::string(format.id).c_str()), MakeObjectData(made.GetValue(), g_cowReferenceType));
}

}  // namespace

void PublishPixelFormats() {
  for (const pixel::PixelFormat& format : pixel::PixelFormats()) PublishFormat(format);
}

}  // namespace vorna::host
