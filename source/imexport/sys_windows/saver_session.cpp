#include "saver_session.h"

#include <limits>

#include "media_win_mf.h"
#include "vorna/colorprofile.h"
#include "vorna/mediasession_keys.h"
#include "vorna/saversettings.h"

namespace tessel {

using namespace vorna;

namespace {

constexpr Float64 MISSING_FPS = std::numeric_limits<Float64>::max();

ErrorResult WrongType(const Char* text) {
  String message = String::FromLiteral(text);
  return RaiseError(g_MediaSessionWrongTypeErrorObject, VORNA_SOURCE_LOCATION, &message);
}

ErrorResult IllegalSize(const Char* text) {
  String message = String::FromLiteral(text);
  return RaiseError(g_IllegalArgumentErrorObject, VORNA_SOURCE_LOCATION, &message);
}

Result<void> TakeImageStream(const MediaStreamInterface& stream, const SaverStreams& streams) {
  const Data selected = stream.GetSelectedFormat();
  const MediaStreamFormat format = stream.GetFormat(selected);
  VORNA_ASSIGN_OR_RETURN(UInt32 type, format.Get<UInt32>(g_mediaFormatImageType));
  if (type != 1 || streams.image) return OK;
  streams.image = ImageExportStream(Cast<MediaStreamImageDataExportInterface>(stream));
  VORNA_RETURN_ON_ERROR(stream.SubscribeStream(selected));
  streams.fps = format.Get<Float64>(g_mediaFormatVideoFps, MISSING_FPS);
  streams.settings = format.Get<DataDictionary>(g_mediaFormatExportsettings, DataDictionary());
  if (streams.fps == MISSING_FPS) return WrongType("MEDIAFORMAT::VIDEO::FPS is missing.");
  return OK;
}

}  // namespace

ObjectRef PublishedSaverFormat(ObjectUseRecord& use) {
  static void* const none = nullptr;
  return ObjectRef(ObjectInterface(*static_cast<void* const*>(LookupObjectValue(use, &none))));
}

Result<MediaConverterInterface> SingleInput(const ConverterBlock& inputs) {
  if (inputs.count != 1) return RaiseError(g_IllegalStateErrorObject, VORNA_SOURCE_LOCATION);
  return Cast<MediaConverterInterface>(inputs[0]);
}

Result<void> PickExportStreams(const MediaConverterInterface& input, const SaverStreams& streams) {
  VORNA_ASSIGN_OR_RETURN(BaseArray<MediaStream> outputs, input.GetOutputStreams(1));
  for (const MediaStream& stream : outputs) {
    if (Cast<MediaStreamImageDataExportInterface>(stream)) VORNA_RETURN_ON_ERROR(TakeImageStream(stream, streams));
    if (Cast<MediaStreamAudioDataExportInterface>(stream) && !streams.audio) {
      streams.audio = AudioExportStream(Cast<MediaStreamAudioDataExportInterface>(stream));
      VORNA_RETURN_ON_ERROR(stream.SubscribeStream(stream.GetSelectedFormat()));
    }
  }
  if (!streams.image) return WrongType("no image stream(s) found.");
  return OK;
}

Result<FrameFormat> ReadFrameFormat(const MediaStreamPropertiesInterface& properties, const ObjectInterface& saver) {
  FrameFormat frame;
  VORNA_ASSIGN_OR_RETURN(frame.width, properties.Get<Int64>(g_mediaFormatImageWidth));
  VORNA_ASSIGN_OR_RETURN(frame.height, properties.Get<Int64>(g_mediaFormatImageHeight));
  frame.aspect = properties.Get<Float64>(g_mediaFormatImageAspectratio, 1.0);
  VORNA_ASSIGN_OR_RETURN(Data pixelFormat, properties.GetData(g_mediaFormatImagePixelformat));
  frame.pixelFormat = PixelFormat(GetObjectFromData<PixelFormatInterface>(&pixelFormat));
  Result<Data> profile = properties.GetData(g_mediaFormatImageColorprofile);
  if (!profile.IsError()) frame.colorProfile = ColorProfileFromData(profile.GetValue());
  if (frame.colorProfile.IsNull()) frame.colorProfile = frame.pixelFormat.GetDefaultColorProfile();
  if (frame.width == 0 || frame.height == 0) return IllegalSize("resolution must not be 0.");
  const DataDictionaryObjectInterface capabilities(saver.GetPointer());
  VORNA_ASSIGN_OR_RETURN(Int64 maximum, capabilities.Get<Int64>(g_mediaOutputUrlMaximalimageresolution));
  if (frame.width > maximum || frame.height > maximum) return IllegalSize("Maximum resolution exceeded.");
  return frame;
}

ColorProfile ProfileToAsk(const DataDictionary& settings, const ColorProfile& frameProfile) {
  if (settings.Get<Bool>(g_saverSettingDisableSrgbConversion, false)) return frameProfile;
  return GetColorProfile(g_srgbColorProfile);
}

Result<GetPixelsDelegate> MakeGetPixels(const ImageExportStream& stream, const MediaStreamPropertiesInterface& properties,
                                        const ColorProfile& profile) {
  GetPixelsDelegate getPixels;
  VORNA_RETURN_ON_ERROR(getPixels.Set([&stream, &properties, profile](const PixelFormat& format) {
    return stream.GetPixelStream(properties, format, format.GetChannelOffsets(), profile, 1);
  }));
  return getPixels;
}

}  // namespace tessel
