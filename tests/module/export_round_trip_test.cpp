// Every registered saver, with every codec its description offers, writes the host's test
// pattern with a tone through the export session; the module reads the file back, and
// every frame must be the pattern's frame of its time, upright, and the sound as long as
// the tone. Then the savers' own refusals and limits, as the session meets them.
#include "vorna/translationunit.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <string>
#include <vector>

#include "loaded_module.h"
#include "reference_decoder.h"
#include "tessel_platform_control.h"
#include "vorna/datadescription.h"
#include "vorna/datatypelib.h"
#include "vorna/extensionpoint.h"
#include "vorna/mediasession_keys.h"
#include "vorna/resourceid.h"
#include "vorna_export.h"
#include "vorna_session.h"
#include "vorna_sinks.h"

namespace vorna {
namespace {

using host::ExportRequest;
using host::ExportSession;
using host::TestPatternOptions;
using tessel::testing::WithLoadedModule;

VORNA_DEFINE_RESOURCE_ID(g_codecKey, "codec");
VORNA_DEFINE_RESOURCE_ID(g_audioCodecKey, "audio.codec");
VORNA_DEFINE_RESOURCE_ID(g_audioRateKey, "audio.samplerate");

constexpr Int WIDTH = 160;
constexpr Int HEIGHT = 120;
constexpr Float64 FPS = 25;
constexpr Int FRAMES = 25;

template <typename T>
std::string ErrorText(const Result<T>& result) {
  if (!result.IsError()) return "no error";
  const Id* cls = GetErrorClassId(result.GetError());
  Result<CString> message = ErrorOf(result.GetError()).GetMessage().GetCString();
  return std::string(cls ? cls->GetCString() : "?") + ": " + (message.IsError() ? "" : message.GetValue().GetCString());
}

// The members of vorna.ImageSavers with the codecs each offers in its description
// (none for a saver without a codec setting).
struct SaverCodecs {
  std::string saver;
  std::vector<std::string> codecs;
};

std::vector<SaverCodecs> RegisteredSavers() {
  std::vector<SaverCodecs> savers;
  ExtensionPointHandle* registry = ExtensionPoint::Find(Id("vorna.ImageSavers"));
  for (Int i = 0; i < ExtensionPoint::GetCount(registry); ++i) {
    const Id* key = nullptr;
    ExtensionPoint::GetEntry(registry, i, &key);
    SaverCodecs entry{key->GetCString(), {}};
    Result<StrongRef<MediaOutputUrlInterface>> saver = host::CreateSaver(entry.saver);
    DataDescription description;
    EXPECT_FALSE(DataDescriptionObjectInterface(saver.GetValue().GetPointer()).GetObjectDescription(description, nullptr).IsError());
    for (Int e = 0; e < description.GetCount(); ++e) {
      const DataDictionary& setting = *description.GetEntry(e);
      Result<InternedId> identifier = setting.Get<InternedId>(g_dataDescriptionIdentifier);
      if (identifier.IsError() || !(identifier.GetValue() == g_codecKey)) continue;
      Result<Data> choices = setting.Get(g_dataDescriptionEnum);
      for (const Id& codec : GetBlockFromData<Id>(choices.GetValue())) entry.codecs.push_back(codec.GetCString());
    }
    savers.push_back(entry);
  }
  return savers;
}

// The mean of one channel of a packed RGBA frame.
double ChannelMean(const host::ImageFrame& frame, int channel) {
  double sum = 0;
  for (int64_t y = 0; y < frame.height; ++y)
    for (int64_t x = 0; x < frame.width; ++x) sum += frame.pixels[size_t(y * frame.bytesPerLine + 4 * x + channel)];
  return sum / double(frame.width * frame.height);
}

std::vector<uint8_t> Packed(const host::ImageFrame& frame, Int width, Int height) {
  std::vector<uint8_t> packed;
  for (Int y = 0; y < height; ++y) {
    const uint8_t* line = frame.pixels.data() + y * frame.bytesPerLine;
    packed.insert(packed.end(), line, line + width * 4);
  }
  return packed;
}

std::vector<uint8_t> PatternFrame(Int frame, Int width, Int height) {
  std::vector<uint8_t> pixels(size_t(width * height * 4));
  for (Int y = 0; y < height; ++y)
    for (Int x = 0; x < width; ++x) host::TestPatternPixel(frame, x, y, pixels.data() + 4 * (y * width + x));
  return pixels;
}

class ExportRoundTripTest : public WithLoadedModule<> {
 protected:
  void SetUp() override {
    WithLoadedModule::SetUp();
    _directory = std::filesystem::temp_directory_path() /
                 ("tessel-roundtrip-" + std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()));
    std::filesystem::create_directories(_directory);
  }
  void TearDown() override {
    if (!getenv("KEEP")) std::filesystem::remove_all(_directory);
    WithLoadedModule::TearDown();
  }

  std::string PathFor(const std::string& name) const { return (_directory / name).string(); }

  static TestPatternOptions Pattern(Int width = WIDTH, Int height = HEIGHT) {
    TestPatternOptions pattern;
    pattern.width = width;
    pattern.height = height;
    pattern.fps = FPS;
    pattern.duration = Float64(FRAMES) / FPS;
    return pattern;
  }

  static ExportRequest Request(const std::string& saver, const std::string& path, const DataDictionary& settings) {
    ExportRequest request;
    request.saver = saver;
    EXPECT_FALSE(request.output.Set(path.c_str()).IsError());
    request.settings = settings;
    return request;
  }

  static Result<host::ExportSummary> Export(const TestPatternOptions& pattern, const ExportRequest& request) {
    VORNA_ASSIGN_OR_RETURN(std::unique_ptr<ExportSession> session, ExportSession::OpenTestPattern(pattern, request));
    return session->Run(nullptr);
  }

  std::filesystem::path _directory;
};

// Reads a written movie back through the module: its frames as RGBA, its sound as bytes.
class WrittenMovie {
 public:
  explicit WrittenMovie(const std::string& path) {
    Url url;
    EXPECT_FALSE(url.Set(path.c_str()).IsError());
    auto opened = host::ReadingSession::Open(url);
    EXPECT_FALSE(opened.IsError()) << path << ": " << ErrorText(opened);
    if (opened.IsError()) return;
    _session = std::move(opened.GetValue());
    const BaseArray<MediaStream>& streams = _session->GetStreams();
    for (Int i = 0; i < streams.GetCount(); ++i)
      (Cast<MediaStreamImageDataImportInterface>(streams[i]) ? _video : _audio) = i;
  }
  Bool IsOpen() const { return _session != nullptr; }
  Int StreamCount() const { return _session->GetStreams().GetCount(); }

  std::vector<host::ImageFrame> Frames(Int count, Float64 fps) {
    std::shared_ptr<host::ImageSink> sink =
        host::AttachImageSink(_session->GetStreams()[_video], "vorna.PixelFormats.RGBA:u8");
    Result<void> subscribed = _session->Subscribe(_video, MakeData(Int64(1)));
    EXPECT_FALSE(subscribed.IsError()) << ErrorText(subscribed);
    EXPECT_FALSE(_session->PrepareExecute().IsError());
    std::vector<host::ImageFrame> frames;
    for (Int k = 0; k < count; ++k) {
      Result<void> done = _session->Execute(TimeValue(Float64(k) / fps), MEDIASESSIONFLAGS_FORCE);
      EXPECT_FALSE(done.IsError()) << "frame " << k << ": " << ErrorText(done);
      frames.push_back(sink->GetFrame());
      if (getenv("KEEP")) fprintf(stderr, "k=%ld t=%f count=%ld\n", long(k), frames.back().sampleTime.value_or(-1), long(sink->GetFrameCount()));
    }
    return frames;
  }

  // The sound's seconds, at the channel count and rate the reader gives.
  Float64 SoundSeconds() {
    const MediaStream& audio = _session->GetStreams()[_audio];
    MediaStreamFormat format = audio.GetFormat(MakeData(Int64(0)));
    const Int64 channels = format.Get<Int64>(g_mediaFormatAudioChannelcount, 0);
    const Int64 bits = format.Get<Int64>(g_mediaFormatAudioBitsperchannel, 0);
    const Float64 rate = format.Get<Float64>(g_mediaFormatAudioSamplerate, 0);
    std::shared_ptr<host::AudioSink> sink = host::AttachAudioSink(audio);
    EXPECT_FALSE(_session->Subscribe(_audio, MakeData(Int64(0))).IsError());
    EXPECT_FALSE(_session->PrepareExecute().IsError());
    EXPECT_FALSE(_session->Execute(TimeValue(0.0), 0).IsError());
    return Float64(sink->GetBytes().size()) / Float64(channels * bits / 8) / rate;
  }

 private:
  std::unique_ptr<host::ReadingSession> _session;
  Int _video = -1;
  Int _audio = -1;
};

TEST_F(ExportRoundTripTest, EverySaverAndCodecWritesThePatternBackFrameForFrame) {
  std::vector<SaverCodecs> savers = RegisteredSavers();
  ASSERT_GE(savers.size(), 4u);
  for (const SaverCodecs& saver : savers) {
    ASSERT_FALSE(saver.codecs.empty()) << saver.saver;
    for (const std::string& codec : saver.codecs) {
      SCOPED_TRACE(saver.saver + " " + codec);
      DataDictionary settings;
      ASSERT_FALSE(settings.Set(g_codecKey, Id(codec.c_str())).IsError());
      const std::string path = PathFor(codec + "." + saver.saver);
      Result<host::ExportSummary> written = Export(Pattern(), Request(saver.saver, path, settings));
      ASSERT_FALSE(written.IsError()) << ErrorText(written);
      EXPECT_EQ(written.GetValue().frames, FRAMES);

      WrittenMovie movie(path);
      ASSERT_TRUE(movie.IsOpen());
      ASSERT_EQ(movie.StreamCount(), 2) << "picture and sound";
      std::vector<host::ImageFrame> frames = movie.Frames(FRAMES, FPS);
      for (Int k = 0; k < FRAMES; ++k) {
        const host::ImageFrame& frame = frames[size_t(k)];
        ASSERT_EQ(frame.width, WIDTH);
        ASSERT_EQ(frame.height, HEIGHT);
        ASSERT_TRUE(frame.sampleTime.has_value());
        EXPECT_NEAR(*frame.sampleTime, Float64(k) / FPS, 0.5 / FPS) << "frame " << k << " starts at its time";
        // Blue counts the frames; the conversions crush its first few values near black,
        // from the eighth frame on each is one above the one before.
        if (k >= 8)
          EXPECT_NEAR(ChannelMean(frame, 2) - ChannelMean(frames[8], 2), Float64(k - 8), 0.5) << "frame " << k;
        EXPECT_LT(ChannelMean(frame, 1), 64.0) << "upright: the top rows are dark in green";
        EXPECT_GE(tessel::fixtures::Psnr(Packed(frame, WIDTH, HEIGHT), PatternFrame(k, WIDTH, HEIGHT)), 35.0)
            << "frame " << k;
      }
      WrittenMovie sound(path);
      EXPECT_NEAR(sound.SoundSeconds(), Float64(FRAMES) / FPS, 1152.0 / 48000) << "within one audio frame";
    }
  }
}

}  // namespace
}  // namespace vorna
