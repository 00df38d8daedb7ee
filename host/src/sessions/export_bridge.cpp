// The export bridge as a converter class of the host, vorna.ExportBridgeClass.
#include "vorna/translationunit.h"

#include "sessions/export_bridge.h"

#include <cmath>
#include <limits>
#include <memory>

#include "media/import_targets.h"
#include "media/media_export_stream_classes.h"
#include "sessions/bridge_frame.h"
#include "sessions/bridge_sound.h"
#include "vorna/component.h"
#include "vorna/formatstring.h"
#include "vorna/mediasession_keys.h"
#include "vorna/referencedata.h"

namespace vorna::host {

namespace {

constexpr SourceLocation BRIDGE_LOCATION{"host/exportbridge", 1, 0};
// Frame rates above this, and sound layouts beyond these, count as damaged, not as real.
constexpr Float64 MAX_FPS = 10000;
constexpr Int MAX_CHANNELS = 64;
constexpr Int MAX_BITS = 64;

VORNA_DEFINE_OBJECT_USE(g_converterBase, "vorna.MediaConverterBaseClass");
VORNA_DEFINE_OBJECT_USE(g_formatClass, "vorna.MediaStreamFormatClass");

ErrorResult Unsupported(const String& message) {
  return RaiseError(g_UnsupportedArgumentErrorObject, BRIDGE_LOCATION, &message);
}

// The input of a call: the one converter of the block.
Result<MediaConverterInterface> TheInput(const ConverterBlock& inputs) {
  MediaConverterInterface input = inputs.count == 1 ? Cast<MediaConverterInterface>(inputs.data[0]) : MediaConverterInterface();
  if (!input) return RaiseError(g_IllegalStateErrorObject, BRIDGE_LOCATION);
  return input;
}

// The stream's format to take: -1 for square pixels if it has one, else 1, else the first.
Result<Data> ChooseFormat(const MediaStreamInterface& stream, Bool squarePixels) {
  VORNA_ASSIGN_OR_RETURN(BaseArray<Data> keys, stream.GetFormats());
  if (keys.GetCount() == 0) return Unsupported(String::FromLiteral("The input's video stream has no format."));
  const Data* chosen = &keys[0];
  for (const Data& key : keys) {
    Result<Int64> number = GetDataValue<Int64>(key);
    if (number.IsError()) continue;
    if (number.GetValue() == -1 && squarePixels) return key;
    if (number.GetValue() == 1) chosen = &key;
  }
  return *chosen;
}

// The value of key in format, or fallback when it has none of type T.
template <typename T>
T Read(const MediaStreamFormat& format, const InternedId& key, T fallback) {
  Result<T> value = format.Get<T>(key);
  return value.IsError() ? fallback : value.GetValue();
}

Result<MediaStreamFormat> NewFormat() {
  VORNA_ASSIGN_OR_RETURN(MediaStreamFormat format,
                         CreateObjectOf<MediaStreamFormatInterface>(g_formatClass, BRIDGE_LOCATION));
  return format;
}

// Adds format under key 1 or 0 to stream, selects it, and offers the stream.
Result<void> Offer(const MediaConverterInterface& self, const MediaStream& stream, const MediaStreamFormat& format,
                   Int64 key) {
  VORNA_RETURN_ON_ERROR(stream.AddFormat(MakeData(key), format));
  VORNA_RETURN_ON_ERROR(stream.SetSelectedFormat(MakeData(key)));
  return self.AddOutputStream(stream);
}

class ExportBridgeComponent : public Component<ExportBridgeComponent> {
 public:
  static ClassRecord _classRecord;

  Result<void> Analyze(const ConverterBlock& inputs, Int a, Int b) {
    if (_analyzed) return OK;
    _analyzed = true;
    VORNA_ASSIGN_OR_RETURN(MediaConverterInterface input, TheInput(inputs));
    VORNA_RETURN_ON_ERROR(input.Analyze(input.GetInputConverter(), a, b));
    VORNA_ASSIGN_OR_RETURN(BaseArray<MediaStream> streams, input.GetOutputStreams(0));
    VORNA_RETURN_ON_ERROR(ConnectImage(streams));
    if (request.withAudio) VORNA_RETURN_ON_ERROR(ConnectSound(streams));
    _planned = true;
    return OK;
  }

  Result<void> PrepareExecute(const ConverterBlock& inputs, Int a, Int b) {
    VORNA_ASSIGN_OR_RETURN(MediaConverterInterface input, TheInput(inputs));
    return input.PrepareExecute(input.GetInputConverter(), a, b);
  }

  // The input's frame for the source time of time; the sound goes out with the first.
  Result<void> Execute(const ConverterBlock& inputs, const TimeValue& time, MEDIASESSIONFLAGS flags) {
    VORNA_ASSIGN_OR_RETURN(MediaConverterInterface input, TheInput(inputs));
    Float64 sourceTime = time.GetSeconds() + request.from;
    VORNA_RETURN_ON_ERROR(input.Execute(input.GetInputConverter(), TimeValue(sourceTime), flags));
    if (!_frame || !_frame->GetShape()) {
      String message = FormatToString("The input delivered no frame for @ s.", sourceTime);
      return RaiseError(g_IllegalStateErrorObject, BRIDGE_LOCATION, &message);
    }
    if (!_sound) return OK;
    VORNA_ASSIGN_OR_RETURN(AudioObject audio, _sound->MakeAudioObject());
    _sound.reset();
    return SetExportAudio(_audioOut, audio);
  }

  Result<void> Close(const ConverterBlock& inputs) {
    VORNA_ASSIGN_OR_RETURN(MediaConverterInterface input, TheInput(inputs));
    return input.Close(input.GetInputConverter());
  }

  const ExportBridgePlan* GetPlan() const { return _planned ? &_plan : nullptr; }

  ExportBridgeRequest request;

 private:
  Result<MediaStream> FindVideoStream(const BaseArray<MediaStream>& streams) const {
    Int seen = 0;
    for (const MediaStream& stream : streams)
      if (Cast<MediaStreamImageDataImportInterface>(stream) && seen++ == request.videoStream) return stream;
    return Unsupported(FormatToString("The input has no video stream @.", request.videoStream));
  }

  Result<void> ConnectImage(const BaseArray<MediaStream>& streams) {
    VORNA_ASSIGN_OR_RETURN(MediaStream video, FindVideoStream(streams));
    VORNA_ASSIGN_OR_RETURN(Data key, ChooseFormat(video, request.squarePixels));
    VORNA_RETURN_ON_ERROR(video.SubscribeStream(key));
    MediaStreamFormat source = video.GetFormat(key);
    _frame = std::make_shared<BridgeFrame>(Read(source, g_mediaFormatImageAspectratio, Float64(1.0)));
    if (!SetImageImportTarget(video, _frame)) return Unsupported(String::FromLiteral("The input's video stream cannot be read."));
    Float64 fps = request.fps.value_or(Read(source, g_mediaFormatVideoFps, Float64(0)));
    // A stream without a length, or with the infinite one, ends when its input says so.
    Float64 duration = Read(source, g_mediaFormatVideoDuration, TimeValue::Infinite()).GetSeconds();
    if (duration >= TimeValue::Infinite().GetSeconds()) duration = std::numeric_limits<Float64>::infinity();
    _plan.fps = fps > 0 && fps <= MAX_FPS ? fps : 0;
    _plan.end = std::min(request.to, duration);
    _plan.width = Read(source, g_mediaFormatImageWidth, Int64(0));
    _plan.height = Read(source, g_mediaFormatImageHeight, Int64(0));
    VORNA_ASSIGN_OR_RETURN(MediaStream image, CreateImageExportStream(_frame));
    VORNA_ASSIGN_OR_RETURN(MediaStreamFormat format, ImageFormat(source));
    return Offer(MediaConverterInterface(GetObjectPointer()), image, format, 1);
  }

  // What the saver reads of the image stream: type 1, size, aspect, pixel format, the
  // frame rate of the export and the settings.
  Result<MediaStreamFormat> ImageFormat(const MediaStreamFormat& source) const {
    VORNA_ASSIGN_OR_RETURN(MediaStreamFormat format, NewFormat());
    VORNA_RETURN_ON_ERROR(format.SetData(g_mediaFormatImageType, UInt32(1)));
    VORNA_RETURN_ON_ERROR(format.SetData(g_mediaFormatImageWidth, Int64(_plan.width)));
    VORNA_RETURN_ON_ERROR(format.SetData(g_mediaFormatImageHeight, Int64(_plan.height)));
    VORNA_RETURN_ON_ERROR(format.SetData(g_mediaFormatImageAspectratio, Read(source, g_mediaFormatImageAspectratio, Float64(1.0))));
    Result<Data> pixelFormat = source.GetData(g_mediaFormatImagePixelformat);
    if (!pixelFormat.IsError()) VORNA_RETURN_ON_ERROR(format.SetData(g_mediaFormatImagePixelformat, pixelFormat.GetValue()));
    if (_plan.fps > 0) VORNA_RETURN_ON_ERROR(format.SetData(g_mediaFormatVideoFps, _plan.fps));
    if (request.settings.IsNull()) return format;
    VORNA_RETURN_ON_ERROR(format.SetData(g_mediaFormatExportsettings, request.settings));
    return format;
  }

  // The input's first audio stream, if it has one.
  Result<void> ConnectSound(const BaseArray<MediaStream>& streams) {
    for (const MediaStream& stream : streams) {
      if (!Cast<MediaStreamAudioDataImportInterface>(stream)) continue;
      VORNA_ASSIGN_OR_RETURN(BaseArray<Data> keys, stream.GetFormats());
      if (keys.GetCount() == 0) continue;
      MediaStreamFormat source = stream.GetFormat(keys[0]);
      SoundLayout layout{Read(source, g_mediaFormatAudioChannelcount, Int64(0)),
                         Read(source, g_mediaFormatAudioBitsperchannel, Int64(0)),
                         Read(source, g_mediaFormatAudioSamplerate, Float64(0))};
      if (layout.channelCount <= 0 || layout.channelCount > MAX_CHANNELS || layout.bitsPerChannel <= 0 ||
          layout.bitsPerChannel > MAX_BITS || layout.bitsPerChannel % 8 || !(layout.sampleRate > 0) ||
          !std::isfinite(layout.sampleRate))
        return Unsupported(String::FromLiteral("The input's sound has no usable layout."));
      VORNA_RETURN_ON_ERROR(stream.SubscribeStream(keys[0]));
      _sound = std::make_shared<BridgeSound>(layout, request.from, request.to);
      if (!SetAudioImportTarget(stream, _sound)) return Unsupported(String::FromLiteral("The input's sound cannot be read."));
      _plan.withAudio = true;
      VORNA_ASSIGN_OR_RETURN(_audioOut, CreateAudioExportStream());
      VORNA_ASSIGN_OR_RETURN(MediaStreamFormat format, SoundFormat(BridgeSound::OutputLayout(layout)));
      return Offer(MediaConverterInterface(GetObjectPointer()), _audioOut, format, 0);
    }
    return OK;
  }

  static Result<MediaStreamFormat> SoundFormat(const SoundLayout& layout) {
    VORNA_ASSIGN_OR_RETURN(MediaStreamFormat format, NewFormat());
    VORNA_RETURN_ON_ERROR(format.SetData(g_mediaFormatAudioChannelcount, Int64(layout.channelCount)));
    VORNA_RETURN_ON_ERROR(format.SetData(g_mediaFormatAudioBitsperchannel, Int64(layout.bitsPerChannel)));
    VORNA_RETURN_ON_ERROR(format.SetData(g_mediaFormatAudioSamplerate, layout.sampleRate));
    return format;
  }

  Bool _analyzed = false;
  Bool _planned = false;
  ExportBridgePlan _plan;
  std::shared_ptr<BridgeFrame> _frame;
  std::shared_ptr<BridgeSound> _sound;  // until its audio object is made
  MediaStream _audioOut;
};

}  // namespace

VORNA_COMPONENT_CLASS(ExportBridgeComponent, g_exportBridgeClass, "vorna.ExportBridgeClass", "", &g_converterBase,
                      &MediaConverterInterface::_record, VORNA_OVERRIDE(MediaConverterInterface, Analyze),
                      VORNA_OVERRIDE(MediaConverterInterface, PrepareExecute),
                      VORNA_OVERRIDE(MediaConverterInterface, Execute), VORNA_OVERRIDE(MediaConverterInterface, Close));

Result<MediaConverter> CreateExportBridge(const ExportBridgeRequest& request) {
  VORNA_ASSIGN_OR_RETURN(ObjectRef object, CreateObjectOfClass(GetDefinedClass(g_exportBridgeClass), BRIDGE_LOCATION));
  GetComponent<ExportBridgeComponent>(object)->request = request;
  return MediaConverter(Cast<MediaConverterInterface>(object));
}

const ExportBridgePlan* GetExportBridgePlan(const ObjectInterface& bridge) {
  ExportBridgeComponent* component = GetComponent<ExportBridgeComponent>(bridge);
  return component ? component->GetPlan() : nullptr;
}

}  // namespace vorna::host
