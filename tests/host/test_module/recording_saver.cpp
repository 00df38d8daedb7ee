// The test module's saver: it does what a movie saver does with the host's export
// session, in the order and with the calls of the media session (Analyze, PrepareExecute,
// Execute per frame, Close, each passed up to its input first), but instead of encoding
// it records what it got: the settings, the sound, and each frame's properties and rows
// (recording_format.h). It is entered in vorna.ImageSavers as "rec", with the file
// format test.recording and the suffix "rec".
//
// Codecs are pixel formats: "BGRX" (BGRX:u8, the default), "YUY2" (YUV:i422a) and "BGR"
// (BGR:u8); another one is refused as a movie saver refuses a codec its container can't
// hold. Frames larger than 4096 pixels a side are refused, and so is a sound codec other
// than "aac" and "mp3" when there is sound. "delay" makes each frame take that many
// milliseconds more, for tests that stop an export while it runs.
#include "vorna/translationunit.h"

#include <atomic>
#include <chrono>
#include <limits>
#include <string>
#include <thread>
#include <vector>

#include "recording_format.h"
#include "vorna/audioobject.h"
#include "vorna/component.h"
#include "vorna/datatypelib.h"
#include "vorna/extensionpoint.h"
#include "vorna/fileformat.h"
#include "vorna/formatstring.h"
#include "vorna/ioconnection.h"
#include "vorna/iostreams.h"
#include "vorna/mediasession_keys.h"
#include "vorna/mediasession_output.h"
#include "vorna/parallelfordynamic.h"
#include "vorna/publishedobject.h"
#include "vorna/resourceid.h"

namespace tessel::testmodule {

using namespace vorna;

namespace {

VORNA_DEFINE_OBJECT_USE(g_outputUrlBaseClass, "vorna.MediaOutputUrlBaseClass");
VORNA_DEFINE_OBJECT_USE(g_fileFormatBaseClass, "vorna.FileFormatBaseClass");
VORNA_DEFINE_OBJECT_USE(g_propertiesClass, "vorna.MediaStreamPropertiesClass");
VORNA_DEFINE_OBJECT_USE(g_recordingFormatObject, "vorna.FileFormats:test.recording");

VORNA_DEFINE_RESOURCE_ID(g_codecKey, "codec");
VORNA_DEFINE_RESOURCE_ID(g_datarateKey, "datarate");
VORNA_DEFINE_RESOURCE_ID(g_keyframesKey, "keyframes");
VORNA_DEFINE_RESOURCE_ID(g_disableSrgbKey, "disable srgb conversion");
VORNA_DEFINE_RESOURCE_ID(g_audioCodecKey, "audio.codec");
VORNA_DEFINE_RESOURCE_ID(g_audioSamplerateKey, "audio.samplerate");
VORNA_DEFINE_RESOURCE_ID(g_audioKilobitrateKey, "audio.kilobitrate");
VORNA_DEFINE_RESOURCE_ID(g_delayKey, "delay");

constexpr Int64 MAXIMAL_RESOLUTION = 4096;
constexpr Float64 MISSING_FPS = std::numeric_limits<Float64>::max();

constinit const Id CODECS[] = {Id("BGRX"), Id("YUY2"), Id("BGR")};
constinit const Id AUDIO_CODECS[] = {Id("aac"), Id("mp3")};

ErrorResult Refuse(ObjectUseRecord& errorClass, const String& message) {
  return RaiseError(errorClass, VORNA_SOURCE_LOCATION, &message);
}

// The pixel format of a codec; null for one this saver doesn't write.
PixelFormat CodecFormat(const Id& codec) {
  if (codec == CODECS[0]) return GetPixelFormat(g_pixelFormatBGRXu8);
  if (codec == CODECS[1]) return GetPixelFormat(g_pixelFormatYUVi422a);
  if (codec == CODECS[2]) return GetPixelFormat(g_pixelFormatBGRu8);
  return PixelFormat();
}

std::string Text(const Id& id) { return std::string(id.GetCString(), size_t(id.GetLength())); }

std::string ProfileName(const ColorProfile& profile) { return profile.IsNull() ? "-" : Text(profile.GetName()); }

// The output file: the header once the first frame is there, then the frames.
class RecordingWriter {
 public:
  Result<void> Init(const Url& url, Int width, Int height, Float64 aspect, Float64 fps, const DataDictionary& settings,
                    const MediaStreamAudioDataExportInterface& audioStream) {
    Id codec = settings.Get<Id>(g_codecKey, CODECS[0]);
    _format = CodecFormat(codec);
    if (!_format)
      return Refuse(g_IllegalArgumentErrorObject, FormatToString("Unsupported Codec for this container format: @.", codec));
    AudioObjectInterface audio = Cast<AudioObjectInterface>(audioStream.GetAudioObject());
    Id audioCodec = settings.Get<Id>(g_audioCodecKey, AUDIO_CODECS[0]);
    if (audio && audioCodec != AUDIO_CODECS[0] && audioCodec != AUDIO_CODECS[1])
      return Refuse(g_MediaSessionWrongTypeErrorObject, FormatToString("Invalid audio codec: @", audioCodec));
    _width = width;
    _height = height;
    _delay = settings.Get<Int32>(g_delayKey, 0);
    VORNA_ASSIGN_OR_RETURN(_stream, OpenOutputStream(url, 0));
    std::string header = std::string(RECORDING_MAGIC) + "\n";
    auto add = [&header](const char* key, const std::string& value) { header += std::string(key) + " " + value + "\n"; };
    add("width", std::to_string(width));
    add("height", std::to_string(height));
    add("aspect", std::to_string(aspect));
    add("fps", std::to_string(fps));
    add("codec", Text(codec));
    add("datarate", std::to_string(settings.Get<BytesValue>(g_datarateKey, BytesValue{}).bytes));
    add("keyframes", std::to_string(settings.Get<Int32>(g_keyframesKey, 0)));
    add("audiocodec", Text(audioCodec));
    add("audiorate", std::to_string(settings.Get<Int64>(g_audioSamplerateKey, 48000)));
    add("audiokbps", std::to_string(settings.Get<Int64>(g_audioKilobitrateKey, 192)));
    Block<UChar> sound = audio ? audio.GetDataPtr() : Block<UChar>{};
    add("soundchannels", std::to_string(audio ? audio.GetChannelCount() : 0));
    add("soundbits", std::to_string(audio ? audio.GetBitsPerChannel() : 0));
    add("soundrate", std::to_string(audio ? audio.GetSampleRate() : 0.0));
    add("soundbytes", std::to_string(sound.count));
    header += "\n";
    VORNA_RETURN_ON_ERROR(_stream.Write(header.data(), Int(header.size())));
    return _stream.Write(sound.data, sound.count);
  }

  // Fetches the rows as a movie writer does: a row loop whose jobs each ask for a pixel
  // handler, here one row per fetch so that several threads share the frame.
  Result<void> WriteFrame(const TimeValue& time, const std::string& pixelFormat, const std::string& profile,
                          const std::string& askedProfile,
                          const Delegate<Result<GetPixelHandlerStruct<>>(const PixelFormat&)>& getPixels) {
    Int bits = _format.GetBitsPerPixel();
    Int rowBytes = (bits + 7) / 8 * _width;
    std::vector<UChar> rows(size_t(rowBytes * _height));
    std::atomic<Int> fetches{0};
    auto init = [&](ParallelFor::DynamicLoopRange<GetPixelHandlerStruct<>>& range) -> Result<void> {
      VORNA_ASSIGN_OR_RETURN(range.localData, getPixels(_format));
      fetches.fetch_add(1);
      return OK;
    };
    auto body = [&](Int y, GetPixelHandlerStruct<>& handler) -> Result<void> {
      return handler.getLine(LineRange{0, y, _width}, LineDestination{rows.data() + y * rowBytes, bits}, 0);
    };
    auto finalise = [](GetPixelHandlerStruct<>& handler) { handler.GiveUpNow(); };
    VORNA_RETURN_ON_ERROR(ParallelFor::Dynamic<GetPixelHandlerStruct<>>(Int(0), _height, init, body, finalise, 0, 1));
    std::string line = "frame " + std::to_string(time.GetSeconds()) + " " + pixelFormat + " " + profile + " " +
                       askedProfile + " " + std::to_string(fetches.load()) + " " + std::to_string(rows.size()) + "\n";
    VORNA_RETURN_ON_ERROR(_stream.Write(line.data(), Int(line.size())));
    VORNA_RETURN_ON_ERROR(_stream.Write(rows.data(), Int(rows.size())));
    std::this_thread::sleep_for(std::chrono::milliseconds(_delay));
    return OK;
  }

  Result<void> Finish() {
    OutputStreamRef stream = std::move(_stream);
    return stream.Close();
  }

 private:
  OutputStreamRef _stream;
  PixelFormat _format;
  Int _width = 0;
  Int _height = 0;
  Int32 _delay = 0;
};

class RecordingSaverImpl : public Component<RecordingSaverImpl> {
 public:
  static ClassRecord _classRecord;

  ~RecordingSaverImpl() {
    if (_writerOpen) (void)_writer.Finish();
  }

  Result<Data> GetData(const ConstDataPtr& key) const {
    const InternedId* id = key.As<InternedId>();
    if (id && (*id == g_mediaOutputUrlSupportsImage || *id == g_mediaOutputUrlSupportsVideo ||
               *id == g_mediaOutputUrlSupportsAudio))
      return MakeData(Bool(true));
    if (id && *id == g_mediaOutputUrlMaximalimageresolution) return MakeData(MAXIMAL_RESOLUTION);
    return Super<&DataDictionaryObjectInterface::GetData, DataDictionaryObjectInterface::kGetData>(key);
  }

  Result<void> GetObjectDescription(DataDescription& description, const DataDictionary* settings) const;

  ObjectRef GetFileFormat() const {
    static void* const none = nullptr;
    return ObjectRef(ObjectInterface(*static_cast<void* const*>(LookupObjectValue(g_recordingFormatObject, &none))));
  }

  Result<void> Analyze(const ConverterBlock& inputs, Int a, Int b) {
    if (_analyzed) return OK;
    _analyzed = true;
    if (inputs.count != 1) return RaiseError(g_IllegalStateErrorObject, VORNA_SOURCE_LOCATION);
    MediaConverterInterface input = Cast<MediaConverterInterface>(inputs.data[0]);
    VORNA_RETURN_ON_ERROR(input.Analyze(input.GetInputConverter(), a, b));
    VORNA_ASSIGN_OR_RETURN(BaseArray<MediaStream> streams, input.GetOutputStreams(1));
    for (const MediaStream& stream : streams) VORNA_RETURN_ON_ERROR(TakeStream(stream));
    if (!_imageStream) return Refuse(g_MediaSessionWrongTypeErrorObject, String::FromLiteral("no image stream(s) found."));
    return OK;
  }

  Result<void> PrepareExecute(const ConverterBlock& inputs, Int a, Int b) {
    if (inputs.count != 1) return RaiseError(g_IllegalStateErrorObject, VORNA_SOURCE_LOCATION);
    MediaConverterInterface input = Cast<MediaConverterInterface>(inputs.data[0]);
    return input.PrepareExecute(input.GetInputConverter(), a, b);
  }

  Result<void> Execute(const ConverterBlock& inputs, const TimeValue& time, MEDIASESSIONFLAGS flags) {
    if (inputs.count != 1) return RaiseError(g_IllegalStateErrorObject, VORNA_SOURCE_LOCATION);
    MediaConverterInterface input = Cast<MediaConverterInterface>(inputs.data[0]);
    VORNA_RETURN_ON_ERROR(input.Execute(input.GetInputConverter(), time, flags));
    if (!_imageStream) return OK;
    VORNA_ASSIGN_OR_RETURN(MediaStreamProperties properties,
                           CreateObjectOf<MediaStreamPropertiesInterface>(g_propertiesClass, VORNA_SOURCE_LOCATION));
    VORNA_RETURN_ON_ERROR(properties.Init(_imageStream));
    VORNA_RETURN_ON_ERROR(_imageStream.InitStream(properties));
    VORNA_RETURN_ON_ERROR(SaveFrame(MediaOutputUrlInterface(GetObjectPointer()).GetOutputUrl(), properties, time));
    return _imageStream.FinishStream(properties);
  }

  Result<void> Close(const ConverterBlock& inputs) {
    if (_writerOpen) {
      _writerOpen = false;
      VORNA_RETURN_ON_ERROR(_writer.Finish());
    }
    if (inputs.count == 0) return OK;
    MediaConverterInterface input = Cast<MediaConverterInterface>(inputs.data[0]);
    return input.Close(input.GetInputConverter());
  }

 private:
  // The first image stream of type 1 and the first audio stream.
  Result<void> TakeStream(const MediaStream& stream) {
    MediaStreamImageDataExportInterface image = Cast<MediaStreamImageDataExportInterface>(stream);
    if (image) {
      MediaStreamFormat format = stream.GetFormat(stream.GetSelectedFormat());
      VORNA_ASSIGN_OR_RETURN(UInt32 type, format.Get<UInt32>(g_mediaFormatImageType));
      if (type == 1 && !_imageStream) {
        _imageStream = StrongRef<MediaStreamImageDataExportInterface>(image);
        VORNA_RETURN_ON_ERROR(stream.SubscribeStream(stream.GetSelectedFormat()));
        Result<Float64> fps = format.Get<Float64>(g_mediaFormatVideoFps);
        _fps = fps.IsError() ? MISSING_FPS : fps.GetValue();
        _settings = format.Get<DataDictionary>(g_mediaFormatExportsettings, DataDictionary());
        if (_fps == MISSING_FPS)
          return Refuse(g_MediaSessionWrongTypeErrorObject, String::FromLiteral("MEDIAFORMAT::VIDEO::FPS is missing."));
      }
    }
    MediaStreamAudioDataExportInterface audio = Cast<MediaStreamAudioDataExportInterface>(stream);
    if (audio && !_audioStream) {
      _audioStream = StrongRef<MediaStreamAudioDataExportInterface>(audio);
      VORNA_RETURN_ON_ERROR(stream.SubscribeStream(stream.GetSelectedFormat()));
    }
    return OK;
  }

  Result<void> SaveFrame(const Url& url, const MediaStreamProperties& properties, const TimeValue& time) {
    VORNA_ASSIGN_OR_RETURN(Int64 width, properties.Get<Int64>(g_mediaFormatImageWidth));
    VORNA_ASSIGN_OR_RETURN(Int64 height, properties.Get<Int64>(g_mediaFormatImageHeight));
    Result<Float64> aspect = properties.Get<Float64>(g_mediaFormatImageAspectratio);
    VORNA_ASSIGN_OR_RETURN(Data formatData, properties.GetData(g_mediaFormatImagePixelformat));
    PixelFormat pixelFormat(GetObjectFromData<PixelFormatInterface>(&formatData));
    if (!pixelFormat) return RaiseError(g_IllegalStateErrorObject, VORNA_SOURCE_LOCATION);
    Result<Data> profileData = properties.GetData(g_mediaFormatImageColorprofile);
    ColorProfile profile = profileData.IsError() ? pixelFormat.GetDefaultColorProfile() : ColorProfileFromData(profileData.GetValue());
    std::string frameProfile = ProfileName(profile);
    if (width == 0 || height == 0)
      return Refuse(g_IllegalArgumentErrorObject, String::FromLiteral("resolution must not be 0."));
    VORNA_ASSIGN_OR_RETURN(Data limit, DataDictionaryObjectInterface(GetObjectPointer())
                                           .GetData(g_mediaOutputUrlMaximalimageresolution));
    VORNA_ASSIGN_OR_RETURN(Int64 maximal, GetDataValue<Int64>(limit));
    if (width > maximal || height > maximal)
      return Refuse(g_IllegalArgumentErrorObject, String::FromLiteral("Maximum resolution exceeded."));
    if (!_writerOpen) {
      VORNA_RETURN_ON_ERROR(_writer.Init(url, width, height, aspect.IsError() ? 1.0 : aspect.GetValue(), _fps,
                                         _settings, _audioStream));
      _writerOpen = true;
    }
    if (!_settings.Get<Bool>(g_disableSrgbKey, false)) profile = GetColorProfile(g_srgbColorProfile);
    Delegate<Result<GetPixelHandlerStruct<>>(const PixelFormat&)> getPixels;
    VORNA_RETURN_ON_ERROR(getPixels.Set([this, &properties, profile](const PixelFormat& format) {
      return _imageStream.GetPixelStream(properties, format, format.GetChannelOffsets(), profile, 1);
    }));
    return _writer.WriteFrame(time, Text(pixelFormat.GetShortName()), frameProfile, ProfileName(profile), getPixels);
  }

  StrongRef<MediaStreamImageDataExportInterface> _imageStream;
  StrongRef<MediaStreamAudioDataExportInterface> _audioStream;
  RecordingWriter _writer;
  Float64 _fps = 1.0;
  DataDictionary _settings;
  Bool _writerOpen = false;
  Bool _analyzed = false;
};

// One entry of the description: key, type, default, and a minimum or choices if given.
Result<void> Describe(DataDescription& description, const InternedId& key, const Data& defaultValue,
                      const Data& minimum = Data(), const Data& choices = Data()) {
  DataDictionary entry;
  VORNA_RETURN_ON_ERROR(entry.Set(g_dataDescriptionIdentifier, MakeData(key)));
  VORNA_RETURN_ON_ERROR(entry.Set(g_dataDescriptionDatatype, MakeData(defaultValue.GetType()->id)));
  VORNA_RETURN_ON_ERROR(entry.Set(g_dataDescriptionDefaultvalue, defaultValue));
  if (minimum.GetType()) VORNA_RETURN_ON_ERROR(entry.Set(g_dataDescriptionMinvalue, minimum));
  if (choices.GetType()) VORNA_RETURN_ON_ERROR(entry.Set(g_dataDescriptionEnum, choices));
  return description.Add(entry);
}

Result<void> RecordingSaverImpl::GetObjectDescription(DataDescription& description,
                                                      const DataDictionary* settings) const {
  const Data noBytes = MakeData(BytesValue{0});
  VORNA_RETURN_ON_ERROR(Describe(description, g_codecKey, MakeData(CODECS[0]), Data(),
                                 MakeBlockData<Id>(Block<const Id>{CODECS, 3})));
  VORNA_RETURN_ON_ERROR(Describe(description, g_datarateKey, noBytes, noBytes));
  VORNA_RETURN_ON_ERROR(Describe(description, g_keyframesKey, MakeData(Int32(0)), MakeData(Int32(0))));
  VORNA_RETURN_ON_ERROR(Describe(description, g_disableSrgbKey, MakeData(Bool(false))));
  VORNA_RETURN_ON_ERROR(Describe(description, g_audioCodecKey, MakeData(AUDIO_CODECS[0]), Data(),
                                 MakeBlockData<Id>(Block<const Id>{AUDIO_CODECS, 2})));
  VORNA_RETURN_ON_ERROR(Describe(description, g_audioSamplerateKey, MakeData(Int64(48000))));
  VORNA_RETURN_ON_ERROR(Describe(description, g_audioKilobitrateKey, MakeData(Int64(192))));
  VORNA_RETURN_ON_ERROR(Describe(description, g_delayKey, MakeData(Int32(0)), MakeData(Int32(0))));
  return Super<&DataDescriptionObjectInterface::GetObjectDescription,
               DataDescriptionObjectInterface::kGetObjectDescription>(description, settings);
}

// The file format of the recordings: it names the suffix and claims no file.
class RecordingFormatImpl : public Component<RecordingFormatImpl> {
 public:
  static ClassRecord _classRecord;

  Result<void> Init() {
    String suffix;
    VORNA_RETURN_ON_ERROR(suffix.SetCString("rec"));
    if (!_suffixes.Append(std::move(suffix))) return CreateError(VORNA_SOURCE_LOCATION, 0);
    return OK;
  }
  Result<Bool> Detect(const Url&) const { return false; }
  Result<Data> GetData(const ConstDataPtr& key) const {
    const InternedId* id = key.As<InternedId>();
    if (id && *id == g_fileFormatCommonsuffixes) return MakeBlockData<String>(_suffixes.ToBlock());
    return Super<&DataDictionaryObjectInterface::GetData, DataDictionaryObjectInterface::kGetData>(key);
  }

 private:
  BaseArray<String> _suffixes;
};

}  // namespace

VORNA_COMPONENT_CLASS(RecordingSaverImpl, g_recordingSaverClass, "net.vorna.test.saver.recording",
                      ".RecordingSaverImpl", &g_outputUrlBaseClass, &MediaOutputUrlInterface::_record,
                      VORNA_OVERRIDE(DataDictionaryObjectInterface, GetData),
                      VORNA_OVERRIDE(DataDescriptionObjectInterface, GetObjectDescription),
                      VORNA_OVERRIDE(MediaConverterInterface, Analyze),
                      VORNA_OVERRIDE(MediaConverterInterface, PrepareExecute),
                      VORNA_OVERRIDE(MediaConverterInterface, Execute), VORNA_OVERRIDE(MediaConverterInterface, Close),
                      VORNA_OVERRIDE(MediaOutputUrlInterface, GetFileFormat));

VORNA_COMPONENT_CLASS(RecordingFormatImpl, g_recordingFormatClass, "net.vorna.test.fileformat.recording",
                      ".RecordingFormatImpl", &g_fileFormatBaseClass, &FileFormatInterface::_record,
                      VORNA_OVERRIDE(FileFormatInterface, Detect),
                      VORNA_OVERRIDE(DataDictionaryObjectInterface, GetData));
VORNA_PUBLISHED_OBJECT(g_recordingFormat, "vorna.FileFormats", "test.recording", g_recordingFormatClass);

namespace {

// The saver enters vorna.ImageSavers as the module starts and leaves it as it ends.
Result<void> EnterSaver() {
  return ExtensionPoint::Insert(ExtensionPoint::Find(Id("vorna.ImageSavers")), Id("rec"),
                                MakeClassData(GetDefinedClass(g_recordingSaverClass)));
}

void LeaveSaver() { ExtensionPoint::Erase(ExtensionPoint::Find(Id("vorna.ImageSavers")), Id("rec")); }

}  // namespace

VORNA_INITIALIZATION_STAGE(g_saverStage, "the recording saver in vorna.ImageSavers", &EnterSaver, &LeaveSaver);

}  // namespace tessel::testmodule
