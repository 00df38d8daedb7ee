// The named objects of the image vocabulary: pixel format groups in vorna.PixelFormats,
// channel types, colour spaces, blends and pixel storage classes in their registries.
// They carry their name; what they stand for is not used by this host.
#include "vorna/translationunit.h"

#include <string>
#include <string_view>

#include "loading/registries.h"
#include "media/pixel_format_objects.h"
#include "vorna/component.h"
#include "vorna/gfx_image.h"
#include "vorna/gfx_image_channels.h"
#include "vorna/gfx_image_pixelformats.h"
#include "vorna/pixel/channeltype.h"
#include "vorna/pixel/colorspace.h"
#include "vorna/pixel/pixelblend.h"
#include "vorna/pixel/pixelformatcatalogue.h"
#include "vorna/pixel/pixelstorage.h"

namespace vorna::host {

namespace {

// A named thing of one vocabulary; the class is what tells the vocabularies apart.
#define VOCABULARY_COMPONENT(NAME)                    \
  class NAME : public Component<NAME> {               \
   public:                                            \
    static ClassRecord _classRecord;                  \
    Id name;                                          \
    Result<void> CopyFrom(const NAME& source) {       \
      name = source.name;                             \
      return OK;                                      \
    }                                                 \
  }

VOCABULARY_COMPONENT(PixelFormatGroupComponent);
VOCABULARY_COMPONENT(ImageChannelTypeComponent);
VOCABULARY_COMPONENT(ColorSpaceComponent);
VOCABULARY_COMPONENT(ImagePixelBlendComponent);
VOCABULARY_COMPONENT(ImagePixelStorageComponent);

}  // namespace

VORNA_COMPONENT_CLASS(PixelFormatGroupComponent, g_groupClass, "vorna.PixelFormatGroupClass", "", nullptr,
                      &PixelFormatGroupInterface::_record);
VORNA_COMPONENT_CLASS(ImageChannelTypeComponent, g_channelTypeClass, "vorna.ImageChannelTypeClass", "", nullptr,
                      &ImageChannelTypeInterface::_record);
VORNA_COMPONENT_CLASS(ColorSpaceComponent, g_colorSpaceClass, "vorna.ColorSpaceClass", "", nullptr,
                      &ColorSpaceInterface::_record);
VORNA_COMPONENT_CLASS(ImagePixelBlendComponent, g_blendClass, "vorna.ImagePixelBlendClass", "", nullptr,
                      &ImagePixelBlendInterface::_record);
VORNA_COMPONENT_CLASS(ImagePixelStorageComponent, g_storageClass, "vorna.ImagePixelStorageClass", "", nullptr,
                      &ImagePixelStorageInterface::_record);

namespace {

template <typename COMPONENT>
void PublishNamed(ObjectDefinitionRecord& cls, std::string_view registry, std::string_view name) {
  Result<ObjectRef> made = CreateObjectOfClass(GetDefinedClass(cls), VORNA_SOURCE_LOCATION);
  if (made.IsError()) return;
  GetComponent<COMPONENT>(made.GetValue())->name.Init(name.data(), Int(name.size()));
  CreateRegistry(std::string(registry).c_str());
  std::string id = std::string(registry) + ":" + std::string(name);
  (void)Publish(Id(id.c_str()), MakeObjectData(made.GetValue()));
}

template <typename COMPONENT, typename NAMES>
void PublishAll(ObjectDefinitionRecord& cls, std::string_view registry, const NAMES& names) {
  for (std::string_view name : names) PublishNamed<COMPONENT>(cls, registry, name);
}

}  // namespace

void PublishPixelVocabulary() {
  for (const pixel::PixelFormatGroup& group : pixel::PixelFormatGroups())
    PublishNamed<PixelFormatGroupComponent>(g_groupClass, "vorna.PixelFormats", group.member);
  PublishAll<ImageChannelTypeComponent>(g_channelTypeClass, pixel::kChannelTypeRegistry, pixel::kChannelTypeNames);
  PublishAll<ColorSpaceComponent>(g_colorSpaceClass, pixel::kColorSpaceRegistry, pixel::kColorSpaceNames);
  PublishAll<ImagePixelBlendComponent>(g_blendClass, pixel::kPixelBlendRegistry, pixel::kPixelBlendNames);
  PublishAll<ImagePixelStorageComponent>(g_storageClass, pixel::kPixelStorageRegistry, pixel::kPixelStorageNames);
}

}  // namespace vorna::host
