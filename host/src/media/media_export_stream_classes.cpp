// The export stream classes as the host provides them: vorna.MediaStreamImageDataExportClass
// serves the rows of its source's current frame in the pixel format and colour profile
// each caller asks for, and vorna.MediaStreamAudioDataExportClass holds its sound as an
// audio object.
#include "vorna/translationunit.h"

#include "media/media_export_stream_classes.h"

#include <vector>

#include "media/color_profiles.h"
#include "media/pixel_row_conversion.h"
#include "vorna/component.h"
#include "vorna/mediasession_keys.h"
#include "vorna/referencedata.h"

namespace vorna::host {

namespace {

constexpr SourceLocation EXPORT_LOCATION{"host/exportstreams", 1, 0};

VORNA_DEFINE_OBJECT_USE(g_streamBase, "vorna.MediaStreamBaseClass");

ErrorResult NoFrame() {
  String message = String::FromLiteral("The export stream has no frame.");
  return RaiseError(g_IllegalStateErrorObject, EXPORT_LOCATION, &message);
}

// The profile of the frame's values: its own, or its pixel format's default.
ColorProfile ProfileOf(const ExportFrameShape& shape) {
  return shape.colorProfile.IsNull() ? shape.pixelFormat.GetDefaultColorProfile() : shape.colorProfile;
}

// The line fetch of one caller: its own conversion and scratch row, so that callers on
// different threads share nothing but the frame.
class LineFetch {
 public:
  LineFetch(std::shared_ptr<const ExportFrameSource> source, const PixelRowConversion& conversion, Int width,
            Int height)
      : _source(std::move(source)), _conversion(conversion), _width(width), _height(height) {}

  Result<void> operator()(const LineRange& region, const LineDestination& destination, Int) {
    if (region.y < 0 || region.y >= _height || region.x < 0 || region.count < 0 ||
        region.count > _width - region.x || (region.count > 0 && !destination.pixels))
      return RaiseError(g_IllegalArgumentErrorObject, EXPORT_LOCATION);
    LineSource pixels = _source->GetPixels(region.x, region.y);
    _conversion.Convert(destination.pixels, pixels.pixels, region.count, pixels.pixelStep, _scratch);
    return OK;
  }

 private:
  std::shared_ptr<const ExportFrameSource> _source;
  PixelRowConversion _conversion;
  Int _width;
  Int _height;
  std::vector<UChar> _scratch;
};

class MediaStreamImageExportComponent : public Component<MediaStreamImageExportComponent> {
 public:
  static ClassRecord _classRecord;

  // The properties of the frame about to be fetched.
  Result<void> InitStream(const MediaStreamPropertiesInterface& properties) {
    const ExportFrameShape* shape = source ? source->GetShape() : nullptr;
    if (!shape) return NoFrame();
    VORNA_RETURN_ON_ERROR(properties.SetData(g_mediaFormatImageWidth, Int64(shape->width)));
    VORNA_RETURN_ON_ERROR(properties.SetData(g_mediaFormatImageHeight, Int64(shape->height)));
    VORNA_RETURN_ON_ERROR(properties.SetData(g_mediaFormatImageAspectratio, shape->aspectRatio));
    VORNA_RETURN_ON_ERROR(
        properties.SetData(g_mediaFormatImagePixelformat, MakeObjectData(shape->pixelFormat, g_cowReferenceType)));
    return properties.SetData(g_mediaFormatImageColorprofile, MakeColorProfileData(ProfileOf(*shape)));
  }
  Result<void> FinishStream(const MediaStreamPropertiesInterface&) { return OK; }

  // Rows of the current frame in format, converted from the frame's colour profile to
  // profile (a null profile: as they are).
  Result<GetPixelHandlerStruct<>> GetPixelStream(const MediaStreamPropertiesInterface&, const PixelFormatInterface& format,
                                                 const ChannelOffsets& channelOffsets, const ColorProfile& profile,
                                                 Int) {
    const ExportFrameShape* shape = source ? source->GetShape() : nullptr;
    if (!shape) return NoFrame();
    VORNA_ASSIGN_OR_RETURN(PixelRowConversion conversion,
                           PixelRowConversion::Make(shape->pixelFormat, ProfileOf(*shape), format, channelOffsets, profile));
    GetPixelHandlerStruct<> handler;
    VORNA_RETURN_ON_ERROR(handler.getLine.Set(LineFetch(source, conversion, shape->width, shape->height)));
    return handler;
  }

  std::shared_ptr<const ExportFrameSource> source;
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

Result<MediaStream> CreateImageExportStream(std::shared_ptr<const ExportFrameSource> source) {
  VORNA_ASSIGN_OR_RETURN(ObjectRef object, CreateObjectOfClass(GetDefinedClass(g_imageExportStreamClass), EXPORT_LOCATION));
  GetComponent<MediaStreamImageExportComponent>(object)->source = std::move(source);
  return MediaStream(Cast<MediaStreamInterface>(object));
}

Result<MediaStream> CreateAudioExportStream() {
  VORNA_ASSIGN_OR_RETURN(ObjectRef object, CreateObjectOfClass(GetDefinedClass(g_audioExportStreamClass), EXPORT_LOCATION));
  return MediaStream(Cast<MediaStreamInterface>(object));
}

Result<void> SetExportAudio(const ObjectInterface& stream, const AudioObject& audio) {
  MediaStreamAudioExportComponent* component = GetComponent<MediaStreamAudioExportComponent>(stream);
  if (!component) return RaiseError(g_IllegalArgumentErrorObject, EXPORT_LOCATION);
  component->audio = audio;
  return OK;
}

}  // namespace vorna::host
