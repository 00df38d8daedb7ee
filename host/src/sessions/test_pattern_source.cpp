// The test-pattern source: a media input that delivers a moving pattern and a tone into
// import streams the way a file's loader does, for export sessions and benchmarks that
// need a known input without a file.
#include "vorna/translationunit.h"

#include <cmath>
#include <cstring>
#include <vector>

#include "media/color_profiles.h"
#include "vorna/component.h"
#include "vorna/mediasession_keys.h"
#include "vorna/parallelfordynamic.h"
#include "vorna_test_pattern.h"

namespace vorna::host {

namespace {

constexpr SourceLocation PATTERN_LOCATION{"host/testpattern", 1, 0};
constexpr Int TONE_BLOCK = 4096;  // samples per delivered block

VORNA_DEFINE_OBJECT_USE(g_converterBase, "vorna.MediaConverterBaseClass");
VORNA_DEFINE_OBJECT_USE(g_imageImportClass, "vorna.MediaStreamImageDataImportClass");
VORNA_DEFINE_OBJECT_USE(g_audioImportClass, "vorna.MediaStreamAudioDataImportClass");
VORNA_DEFINE_OBJECT_USE(g_formatClass, "vorna.MediaStreamFormatClass");
VORNA_DEFINE_OBJECT_USE(g_propertiesClass, "vorna.MediaStreamPropertiesClass");

using ImageStream = StrongRef<MediaStreamImageDataImportInterface>;
using AudioStream = StrongRef<MediaStreamAudioDataImportInterface>;

// The keys a frame's properties and the image format share.
Result<void> SetImageKeys(const DataDictionaryObjectInterface& keys, const TestPatternOptions& options) {
  VORNA_RETURN_ON_ERROR(keys.SetData(g_mediaFormatImagePixelformat,
                                     MakeObjectData(GetPixelFormat(g_pixelFormatRGBAu8), g_cowReferenceType)));
  VORNA_RETURN_ON_ERROR(keys.SetData(g_mediaFormatImageWidth, Int64(options.width)));
  VORNA_RETURN_ON_ERROR(keys.SetData(g_mediaFormatImageHeight, Int64(options.height)));
  return keys.SetData(g_mediaFormatImageColorprofile,
                      MakeColorProfileData(FindColorProfile(options.colorProfile.c_str())));
}

Result<MediaStreamFormat> ImageFormat(const TestPatternOptions& options) {
  VORNA_ASSIGN_OR_RETURN(MediaStreamFormat format, CreateObjectOf<MediaStreamFormatInterface>(g_formatClass, PATTERN_LOCATION));
  VORNA_RETURN_ON_ERROR(format.SetData(g_mediaFormatImageType, UInt32(1)));
  VORNA_RETURN_ON_ERROR(SetImageKeys(format, options));
  VORNA_RETURN_ON_ERROR(format.SetData(g_mediaFormatImageAspectratio, options.pixelAspect));
  VORNA_RETURN_ON_ERROR(format.SetData(g_mediaFormatVideoFps, options.fps));
  VORNA_RETURN_ON_ERROR(format.SetData(g_mediaFormatVideoStarttime, TimeValue(0.0)));
  VORNA_RETURN_ON_ERROR(format.SetData(g_mediaFormatVideoDuration, TimeValue(options.duration)));
  return format;
}

Result<MediaStreamFormat> AudioFormat(const TestPatternOptions& options) {
  VORNA_ASSIGN_OR_RETURN(MediaStreamFormat format, CreateObjectOf<MediaStreamFormatInterface>(g_formatClass, PATTERN_LOCATION));
  VORNA_RETURN_ON_ERROR(format.SetData(g_mediaFormatAudioChannelcount, Int64(2)));
  VORNA_RETURN_ON_ERROR(format.SetData(g_mediaFormatAudioBitsperchannel, Int64(options.floatSound ? 32 : 16)));
  VORNA_RETURN_ON_ERROR(format.SetData(g_mediaFormatAudioSamplerate, Float64(options.sampleRate)));
  return format;
}

// What one job of the row loop holds: its handler and the row it draws.
struct RowJob {
  SetPixelHandlerStruct handler;
  std::vector<UChar> row;
};

class TestPatternSourceComponent : public Component<TestPatternSourceComponent> {
 public:
  static ClassRecord _classRecord;

  Int SupportImportStrategy() const { return 1; }

  Result<void> Analyze(const ConverterBlock&, Int, Int) {
    if (_image) return OK;
    MediaConverterInterface self(GetObjectPointer());
    VORNA_ASSIGN_OR_RETURN(_image, CreateObjectOf<MediaStreamImageDataImportInterface>(g_imageImportClass, PATTERN_LOCATION));
    VORNA_ASSIGN_OR_RETURN(MediaStreamFormat imageFormat, ImageFormat(options));
    VORNA_RETURN_ON_ERROR(_image.AddFormat(MakeData(Int64(1)), imageFormat));
    VORNA_RETURN_ON_ERROR(self.AddOutputStream(_image));
    if (options.toneHertz <= 0) return OK;
    VORNA_ASSIGN_OR_RETURN(_audio, CreateObjectOf<MediaStreamAudioDataImportInterface>(g_audioImportClass, PATTERN_LOCATION));
    VORNA_ASSIGN_OR_RETURN(MediaStreamFormat audioFormat, AudioFormat(options));
    VORNA_RETURN_ON_ERROR(_audio.AddFormat(MakeData(Int64(0)), audioFormat));
    return self.AddOutputStream(_audio);
  }

  // The sound once, then the frame of time unless it went out last time (or force).
  Result<void> Execute(const ConverterBlock&, const TimeValue& time, MEDIASESSIONFLAGS flags) {
    if (!_image) return RaiseError(g_IllegalStateErrorObject, PATTERN_LOCATION);
    if (time.GetSeconds() >= options.duration || time.GetSeconds() < 0) {
      String message = String::FromLiteral("End of stream");
      return RaiseError(g_MediaStreamEOFErrorObject, PATTERN_LOCATION, &message);
    }
    if (_audio && _audio.IsSubscribed() && !_audioDelivered) {
      _audioDelivered = true;
      VORNA_RETURN_ON_ERROR(DeliverTone());
    }
    Int frame = Int(std::floor(time.GetSeconds() * options.fps + 1e-6));
    if (!_image.IsSubscribed() || (frame == _lastFrame && !(flags & MEDIASESSIONFLAGS_FORCE))) return OK;
    _lastFrame = frame;
    return DeliverFrame(frame);
  }

  TestPatternOptions options;

 private:
  Result<MediaStreamProperties> NewProperties(const MediaStreamInterface& stream) const {
    VORNA_ASSIGN_OR_RETURN(MediaStreamProperties properties,
                           CreateObjectOf<MediaStreamPropertiesInterface>(g_propertiesClass, PATTERN_LOCATION));
    VORNA_RETURN_ON_ERROR(properties.Init(stream));
    return properties;
  }

  Result<void> DeliverFrame(Int frame) {
    VORNA_ASSIGN_OR_RETURN(MediaStreamProperties properties, NewProperties(_image));
    VORNA_RETURN_ON_ERROR(SetImageKeys(properties, options));
    VORNA_RETURN_ON_ERROR(properties.SetData(g_mediaPropertiesVideoSampletime, TimeValue(Float64(frame) / options.fps)));
    VORNA_RETURN_ON_ERROR(properties.SetData(g_mediaPropertiesVideoSampleduration, TimeValue(1.0 / options.fps)));
    VORNA_RETURN_ON_ERROR(_image.InitStream(properties));
    Result<void> lines = DeliverRows(properties, frame);
    Result<void> finished = _image.FinishStream(properties);
    return lines.IsError() ? lines : finished;
  }

  Result<void> DeliverRows(const MediaStreamProperties& properties, Int frame) {
    PixelFormat rgba = GetPixelFormat(g_pixelFormatRGBAu8);
    ChannelOffsets offsets = rgba.GetChannelOffsets();
    Int width = options.width;
    auto init = [&](ParallelFor::DynamicLoopRange<RowJob>& range) -> Result<void> {
      VORNA_ASSIGN_OR_RETURN(range.localData.handler, _image.SetPixelStream(properties, offsets, 0));
      range.localData.row.resize(size_t(width) * 4);
      return OK;
    };
    auto body = [&](Int y, RowJob& job) -> Result<void> {
      for (Int x = 0; x < width; ++x) TestPatternPixel(frame, x, y, job.row.data() + 4 * x);
      return job.handler.setLine(LineRange{0, y, width}, LineSource{job.row.data(), 32}, 0);
    };
    auto finalise = [](RowJob& job) { job.handler.FreeNow(); };
    return ParallelFor::Dynamic<RowJob>(Int(0), options.height, init, body, finalise);
  }

  Result<void> DeliverTone() {
    VORNA_ASSIGN_OR_RETURN(MediaStreamProperties properties, NewProperties(_audio));
    VORNA_RETURN_ON_ERROR(_audio.InitStream(properties));
    Result<void> delivered = DeliverToneBlocks(properties);
    Result<void> finished = _audio.FinishStream(properties);
    return delivered.IsError() ? delivered : finished;
  }

  Result<void> DeliverToneBlocks(const MediaStreamProperties& properties) {
    VORNA_ASSIGN_OR_RETURN(AudioDataCallback deliver, _audio.SetAudioDataCallback(properties));
    Int samples = Int(options.duration * Float64(options.sampleRate) + 0.5);
    Int sampleBytes = options.floatSound ? 4 : 2;
    std::vector<UChar> block;
    for (Int first = 0; first < samples; first += TONE_BLOCK) {
      Int count = std::min(TONE_BLOCK, samples - first);
      block.resize(size_t(count * 2 * sampleBytes));
      for (Int i = 0; i < count; ++i) StoreSample(TestPatternTone(options, first + i), &block[size_t(i * 2 * sampleBytes)]);
      VORNA_RETURN_ON_ERROR(deliver(AudioDataBlock{block.data(), Int(block.size())}));
    }
    return OK;
  }

  // One sample on both channels, in the sound's format.
  void StoreSample(Int16 sample, UChar* both) const {
    if (!options.floatSound) {
      std::memcpy(both, &sample, 2);
      std::memcpy(both + 2, &sample, 2);
      return;
    }
    Float32 value = Float32(sample) / 32768.0f;
    std::memcpy(both, &value, 4);
    std::memcpy(both + 4, &value, 4);
  }

  ImageStream _image;
  AudioStream _audio;
  Bool _audioDelivered = false;
  Int _lastFrame = -1;
};

}  // namespace

VORNA_COMPONENT_CLASS(TestPatternSourceComponent, g_testPatternSourceClass, "vorna.TestPatternSourceClass", "",
                      &g_converterBase, &MediaInputInterface::_record,
                      VORNA_OVERRIDE(MediaConverterInterface, SupportImportStrategy),
                      VORNA_OVERRIDE(MediaConverterInterface, Analyze), VORNA_OVERRIDE(MediaConverterInterface, Execute));

// A quarter of full scale.
Int16 TestPatternTone(const TestPatternOptions& options, Int i) {
  Float64 phase = 2.0 * M_PI * options.toneHertz * Float64(i) / Float64(options.sampleRate);
  return Int16(std::lround(8192.0 * std::sin(phase)));
}

Result<MediaConverter> CreateTestPatternSource(const TestPatternOptions& options) {
  if (options.width <= 0 || options.height <= 0 || options.width > 1 << 16 || options.height > 1 << 16 ||
      !(options.fps > 0) || !(options.duration > 0) || options.sampleRate <= 0 ||
      options.duration > 86400 || FindColorProfile(options.colorProfile.c_str()).IsNull())
    return RaiseError(g_IllegalArgumentErrorObject, PATTERN_LOCATION);
  VORNA_ASSIGN_OR_RETURN(ObjectRef object,
                         CreateObjectOfClass(GetDefinedClass(g_testPatternSourceClass), PATTERN_LOCATION));
  GetComponent<TestPatternSourceComponent>(object)->options = options;
  return MediaConverter(Cast<MediaConverterInterface>(object));
}

}  // namespace vorna::host
