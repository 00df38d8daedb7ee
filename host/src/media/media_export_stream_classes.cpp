// The export stream classes as the host provides them: vorna.MediaStreamImageDataExportClass
// gives frame lines of its source in any pixel format that has a conversion from RGBA,
// and vorna.MediaStreamAudioDataExportClass holds its sound as an audio object.
#include "vorna/translationunit.h"

#include "media/media_export_stream_classes.h"

#include <vector>

#include "loading/registries.h"
#include "vorna/component.h"
#include "vorna/referencedata.h"

namespace vorna::host {

namespace {

constexpr SourceLocation EXPORT_LOCATION{"host/exportstreams", 1, 0};

VORNA_DEFINE_OBJECT_USE(g_streamBase, "vorna.MediaStreamBaseClass");
VORNA_DEFINE_OBJECT_USE(g_rgba, "vorna.PixelFormats.RGBA:u8");

class MediaStreamImageExportComponent : public Component<MediaStreamImageExportComponent> {
 public:
  static ClassRecord _classRecord;

  Result<void> InitStream(const MediaStreamPropertiesInterface&) { return OK; }
  Result<void> FinishStream(const MediaStreamPropertiesInterface&) { return OK; }

  // Each handler converts through a line buffer of its own, so handlers of different
  // threads share nothing but the source.
  Result<GetPixelHandlerStruct<>> GetPixelStream(const MediaStreamPropertiesInterface&, const PixelFormatInterface& format,
                                                 const ChannelOffsets& channelOffsets, const ColorProfile&, Int) {
    PixelFormat rgba = GetPixelFormat(g_rgba);
    if (!source) return RaiseError(g_IllegalStateErrorObject, EXPORT_LOCATION);
    VORNA_ASSIGN_OR_RETURN(ConvertPixelFunc convert,
                           format.GetConvertPixelFunc(rgba, rgba.GetChannelOffsets(), channelOffsets, nullptr, nullptr));
    if (!convert) return RaiseError(g_UnsupportedArgumentErrorObject, EXPORT_LOCATION);
    GetPixelHandlerStruct<> handler;
    auto line = std::make_shared<std::vector<UChar>>();
    VORNA_RETURN_ON_ERROR(handler.getLine.Set(
        [from = source, convert, line](const LineRange& region, const LineDestination& destination, Int) -> Result<void> {
          if (region.y < 0 || region.y >= from->GetHeight() || region.x < 0 || region.count < 0)
            return RaiseError(g_IllegalArgumentErrorObject, EXPORT_LOCATION);
          line->resize(size_t(region.count * 4));
          from->GetLine(region.x, region.y, region.count, line->data());
          convert(destination.pixels, line->data(), region.count, 32);
          return OK;
        }));
    return handler;
  }

  std::shared_ptr<const ImageLineSource> source;
};

class MediaStreamAudioExportComponent : public Component<MediaStreamAudioExportComponent> {
 public:
  static ClassRecord _classRecord;
  ObjectRef GetAudioObject() const { return ObjectRef(audio); }
  AudioObject audio;
};

}  // namespace

VORNA_COMPONENT_CLASS(MediaStreamImageExportComponent, g_imageExportStreamClass,
                      "vorna.MediaStreamImageDataExportClass", "", &g_streamBase,
                      &MediaStreamImageDataExportInterface::_record,
                      VORNA_OVERRIDE(MediaStreamImageDataExportInterface, InitStream),
                      VORNA_OVERRIDE(MediaStreamImageDataExportInterface, GetPixelStream),
                      VORNA_OVERRIDE(MediaStreamImageDataExportInterface, FinishStream));
VORNA_COMPONENT_CLASS(MediaStreamAudioExportComponent, g_audioExportStreamClass,
                      "vorna.MediaStreamAudioDataExportClass", "", &g_streamBase,
                      &MediaStreamAudioDataExportInterface::_record,
                      VORNA_OVERRIDE(MediaStreamAudioDataExportInterface, GetAudioObject));

Result<MediaStream> CreateImageExportStream(std::shared_ptr<const ImageLineSource> source) {
  VORNA_ASSIGN_OR_RETURN(ObjectRef object, CreateObjectOfClass(GetDefinedClass(g_imageExportStreamClass), EXPORT_LOCATION));
  GetComponent<MediaStreamImageExportComponent>(object)->source = std::move(source);
  return MediaStream(Cast<MediaStreamInterface>(object));
}

Result<MediaStream> CreateAudioExportStream(const AudioObject& audio) {
  VORNA_ASSIGN_OR_RETURN(ObjectRef object, CreateObjectOfClass(GetDefinedClass(g_audioExportStreamClass), EXPORT_LOCATION));
  GetComponent<MediaStreamAudioExportComponent>(object)->audio = audio;
  return MediaStream(Cast<MediaStreamInterface>(object));
}

}  // namespace vorna::host
