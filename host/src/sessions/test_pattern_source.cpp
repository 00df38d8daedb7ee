// The test-pattern source: a media input whose image stream shows a moving pattern
// and whose audio stream holds a tone, for export sessions that need a known input.
#include "vorna/translationunit.h"

#include <atomic>
#include <cmath>

#include "media/media_export_stream_classes.h"
#include "vorna/component.h"
#include "vorna/mediasession_keys.h"
#include "vorna_test_pattern.h"

namespace vorna::host {

namespace {

constexpr SourceLocation PATTERN_LOCATION{"host/testpattern", 1, 0};

VORNA_DEFINE_OBJECT_USE(g_converterBase, "vorna.MediaConverterBaseClass");
VORNA_DEFINE_OBJECT_USE(g_formatClass, "vorna.MediaStreamFormatClass");
VORNA_DEFINE_OBJECT_USE(g_audioObjectClass, "vorna.AudioObjectClass");

class PatternLines : public ImageLineSource {
 public:
  PatternLines(Int width, Int height) : _width(width), _height(height) {}
  Int GetWidth() const override { return _width; }
  Int GetHeight() const override { return _height; }
  void GetLine(Int x, Int y, Int count, UChar* rgba) const override {
    Int frame = _frame.load();
    for (Int i = 0; i < count; ++i) TestPatternPixel(frame, x + i, y, rgba + 4 * i);
  }
  void SetFrame(Int frame) { _frame = frame; }

 private:
  Int _width;
  Int _height;
  std::atomic<Int> _frame{0};
};

Result<MediaStreamFormat> ImageFormat(const TestPatternOptions& options) {
  VORNA_ASSIGN_OR_RETURN(MediaStreamFormat format, CreateObjectOf<MediaStreamFormatInterface>(g_formatClass, PATTERN_LOCATION));
  VORNA_RETURN_ON_ERROR(format.SetData(g_mediaFormatImageType, UInt32(1)));
  VORNA_RETURN_ON_ERROR(format.SetData(g_mediaFormatImagePixelformat,
                                       MakeObjectData(GetPixelFormat(g_pixelFormatRGBAu8), g_cowReferenceType)));
  VORNA_RETURN_ON_ERROR(format.SetData(g_mediaFormatImageWidth, Int64(options.width)));
  VORNA_RETURN_ON_ERROR(format.SetData(g_mediaFormatImageHeight, Int64(options.height)));
  VORNA_RETURN_ON_ERROR(format.SetData(g_mediaFormatImageAspectratio, Float64(1.0)));
  VORNA_RETURN_ON_ERROR(format.SetData(g_mediaFormatVideoFps, options.fps));
  VORNA_RETURN_ON_ERROR(format.SetData(g_mediaFormatVideoStarttime, TimeValue(0.0)));
  VORNA_RETURN_ON_ERROR(format.SetData(g_mediaFormatVideoDuration, TimeValue(options.duration)));
  return format;
}

// The whole tone, 16-bit stereo, at a quarter of full scale.
Result<AudioObject> Tone(const TestPatternOptions& options) {
  VORNA_ASSIGN_OR_RETURN(AudioObject audio, CreateObjectOf<AudioObjectInterface>(g_audioObjectClass, PATTERN_LOCATION));
  Int samples = Int(options.duration * Float64(options.sampleRate) + 0.5);
  VORNA_RETURN_ON_ERROR(audio.Init(2, 16, Float64(options.sampleRate), samples));
  auto* out = reinterpret_cast<Int16*>(audio.GetDataPtr().data);
  for (Int i = 0; i < samples; ++i) {
    Float64 phase = 2.0 * M_PI * options.toneHertz * Float64(i) / Float64(options.sampleRate);
    out[2 * i] = out[2 * i + 1] = Int16(std::lround(8192.0 * std::sin(phase)));
  }
  return audio;
}

Result<MediaStreamFormat> AudioFormat(const TestPatternOptions& options) {
  VORNA_ASSIGN_OR_RETURN(MediaStreamFormat format, CreateObjectOf<MediaStreamFormatInterface>(g_formatClass, PATTERN_LOCATION));
  VORNA_RETURN_ON_ERROR(format.SetData(g_mediaFormatAudioChannelcount, Int64(2)));
  VORNA_RETURN_ON_ERROR(format.SetData(g_mediaFormatAudioBitsperchannel, Int64(16)));
  VORNA_RETURN_ON_ERROR(format.SetData(g_mediaFormatAudioSamplerate, Float64(options.sampleRate)));
  return format;
}

class TestPatternSourceComponent : public Component<TestPatternSourceComponent> {
 public:
  static ClassRecord _classRecord;

  Int SupportImportStrategy() const { return 1; }

  Result<void> Analyze(const ConverterBlock&, Int, Int) {
    if (_lines) return OK;
    MediaConverterInterface self(GetObjectPointer());
    _lines = std::make_shared<PatternLines>(options.width, options.height);
    VORNA_ASSIGN_OR_RETURN(MediaStream image, CreateImageExportStream(_lines));
    VORNA_ASSIGN_OR_RETURN(MediaStreamFormat imageFormat, ImageFormat(options));
    VORNA_RETURN_ON_ERROR(image.AddFormat(MakeData(Int64(1)), imageFormat));
    VORNA_RETURN_ON_ERROR(self.AddOutputStream(image));
    if (options.toneHertz <= 0) return OK;
    VORNA_ASSIGN_OR_RETURN(AudioObject tone, Tone(options));
    VORNA_ASSIGN_OR_RETURN(MediaStream audio, CreateAudioExportStream(tone));
    VORNA_ASSIGN_OR_RETURN(MediaStreamFormat audioFormat, AudioFormat(options));
    VORNA_RETURN_ON_ERROR(audio.AddFormat(MakeData(Int64(1)), audioFormat));
    return self.AddOutputStream(audio);
  }

  // Selects the frame of time; past the duration the stream has ended.
  Result<void> Execute(const ConverterBlock&, const TimeValue& time, MEDIASESSIONFLAGS) {
    if (!_lines) return RaiseError(g_IllegalStateErrorObject, PATTERN_LOCATION);
    if (time.GetSeconds() >= options.duration) {
      String message = String::FromLiteral("End of stream");
      return RaiseError(g_MediaStreamEOFErrorObject, PATTERN_LOCATION, &message);
    }
    _lines->SetFrame(Int(std::floor(time.GetSeconds() * options.fps + 1e-6)));
    return OK;
  }

  TestPatternOptions options;

 private:
  std::shared_ptr<PatternLines> _lines;
};

}  // namespace

VORNA_COMPONENT_CLASS(TestPatternSourceComponent, g_testPatternSourceClass, "vorna.TestPatternSourceClass", "",
                      &g_converterBase, &MediaInputInterface::_record,
                      VORNA_OVERRIDE(MediaConverterInterface, SupportImportStrategy),
                      VORNA_OVERRIDE(MediaConverterInterface, Analyze), VORNA_OVERRIDE(MediaConverterInterface, Execute));

Result<MediaConverter> CreateTestPatternSource(const TestPatternOptions& options) {
  if (options.width <= 0 || options.height <= 0 || options.fps <= 0 || options.duration <= 0 || options.sampleRate <= 0)
    return RaiseError(g_IllegalArgumentErrorObject, PATTERN_LOCATION);
  VORNA_ASSIGN_OR_RETURN(ObjectRef object,
                         CreateObjectOfClass(GetDefinedClass(g_testPatternSourceClass), PATTERN_LOCATION));
  GetComponent<TestPatternSourceComponent>(object)->options = options;
  return MediaConverter(Cast<MediaConverterInterface>(object));
}

}  // namespace vorna::host
