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
#include "vfw.h"
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
VORNA_DEFINE_RESOURCE_ID(g_aviTypeKey, "avitype");
VORNA_DEFINE_RESOURCE_ID(g_aviHandlerKey, "avihandler");
VORNA_DEFINE_RESOURCE_ID(g_keyframesKey, "keyframes");

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

// One export of the walk: a saver of vorna.ImageSavers with the settings that choose one
// of its codecs, and the least PSNR its pictures must reach.
struct ExportCase {
  std::string saver;
  std::string codec;
  DataDictionary settings;
  Float64 minPsnr = 35;
  // How far the sound read back may run past the pictures: MP4 trims the AAC encoder's
  // delay and the padding of its last frame, ASF keeps both, and AVI stores PCM.
  Float64 soundSlack = 1152.0 / 48000;
};

// The codecs a saver's description offers for its codec setting.
std::vector<std::string> DescribedCodecs(const std::string& saverId) {
  std::vector<std::string> codecs;
  Result<StrongRef<MediaOutputUrlInterface>> saver = host::CreateSaver(saverId);
  DataDescription description;
  EXPECT_FALSE(DataDescriptionObjectInterface(saver.GetValue().GetPointer()).GetObjectDescription(description, nullptr).IsError());
  for (Int e = 0; e < description.GetCount(); ++e) {
    const DataDictionary& setting = *description.GetEntry(e);
    Result<InternedId> identifier = setting.Get<InternedId>(g_dataDescriptionIdentifier);
    if (identifier.IsError() || !(identifier.GetValue() == g_codecKey)) continue;
    for (const Id& codec : GetBlockFromData<Id>(setting.Get(g_dataDescriptionEnum).GetValue()))
      codecs.push_back(codec.GetCString());
  }
  return codecs;
}

Id OwnedId(const std::string& text) {
  Id id;
  EXPECT_TRUE(id.Init(text.c_str()));
  return id;
}

std::string FourCharacters(DWORD code) {
  std::string text;
  for (int i = 0; i < 4; ++i) text += char((code >> (8 * i)) & 0xFF);
  return text;
}

// The AVI saver takes its compressor from the stored choice of the chooser: every
// compressor the platform offers, at the highest quality. Cinepak and Video 1 are the
// coarse codecs of their day.
std::vector<ExportCase> AviCases() {
  std::vector<TesselCompressor> compressors(TesselPlatformGetCompressors(nullptr, 0));
  TesselPlatformGetCompressors(compressors.data(), DWORD(compressors.size()));
  std::vector<ExportCase> cases;
  for (const TesselCompressor& compressor : compressors) {
    ExportCase avi{"avi", FourCharacters(compressor.fccHandler), DataDictionary(), 35};
    if (avi.codec == "cvid") avi.minPsnr = 30;
    if (avi.codec == "msvc" || avi.codec == "cram") avi.minPsnr = 28;
    EXPECT_FALSE(avi.settings.Set(g_aviTypeKey, Int32(ICTYPE_VIDEO)).IsError());
    EXPECT_FALSE(avi.settings.Set(g_aviHandlerKey, Int32(compressor.fccHandler)).IsError());
    cases.push_back(avi);
  }
  return cases;
}

// Every member of vorna.ImageSavers with every codec it offers.
std::vector<ExportCase> EveryExport() {
  std::vector<ExportCase> cases;
  ExtensionPointHandle* registry = ExtensionPoint::Find(Id("vorna.ImageSavers"));
  for (Int i = 0; i < ExtensionPoint::GetCount(registry); ++i) {
    const Id* key = nullptr;
    ExtensionPoint::GetEntry(registry, i, &key);
    const std::string saver = key->GetCString();
    if (saver == "avi") {
      for (const ExportCase& avi : AviCases()) cases.push_back(avi);
      continue;
    }
    for (const std::string& codec : DescribedCodecs(saver)) {
      ExportCase movie{saver, codec, DataDictionary()};
      if (saver == "asf" || saver == "wmv") movie.soundSlack = 2048.0 / 48000;
      EXPECT_FALSE(movie.settings.Set(g_codecKey, OwnedId(codec)).IsError());
      cases.push_back(movie);
    }
  }
  return cases;
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
  std::vector<ExportCase> cases = EveryExport();
  ASSERT_GE(cases.size(), 9u) << "the four movie savers' codecs and the AVI compressors";
  for (const ExportCase& c : cases) {
    SCOPED_TRACE(c.saver + " " + c.codec);
    const std::string path = PathFor(c.codec + "." + c.saver);
    Result<host::ExportSummary> written = Export(Pattern(), Request(c.saver, path, c.settings));
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
      // from the eighth frame on each is one above the one before. The coarse codecs
      // keep a block until it changes by more than that.
      if (k >= 8 && c.minPsnr >= 35) {
        EXPECT_NEAR(ChannelMean(frame, 2) - ChannelMean(frames[8], 2), Float64(k - 8), 1.0) << "frame " << k;
      }
      EXPECT_LT(ChannelMean(frame, 1), 64.0) << "upright: the top rows are dark in green";
      EXPECT_GE(tessel::fixtures::Psnr(Packed(frame, WIDTH, HEIGHT), PatternFrame(k, WIDTH, HEIGHT)), c.minPsnr)
          << "frame " << k;
    }
    WrittenMovie sound(path);
    EXPECT_NEAR(sound.SoundSeconds(), Float64(FRAMES) / FPS, c.soundSlack);
  }
}

// The module's refusals reach the caller as they stand. A size beyond the module's limit
// is refused before a file is made; one within it that the platform can't encode comes
// back as the platform's failure.
TEST_F(ExportRoundTripTest, RefusalsComeWithTheirMessages) {
  const struct {
    const char* saver;
    const char* codec;
    const char* audioCodec;
    Int width;
    Int height;
    const char* message;
    bool leavesNoFile;
  } kCases[] = {
      {"mp4", "WMV3", nullptr, WIDTH, HEIGHT, "Unsupported Codec for this container format: WMV3.", false},
      {"mp4", nullptr, "opus", WIDTH, HEIGHT, "Invalid audio codec: opus", false},
      {"mp4", nullptr, nullptr, 32001, 2, "Maximum resolution exceeded.", true},
      {"wmv", nullptr, nullptr, 2, 32001, "Maximum resolution exceeded.", true},
      {"mp4", nullptr, nullptr, 32000, 2, "Error 0xC00D36B4", false},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(std::string(c.saver) + " " + c.message);
    DataDictionary settings;
    if (c.codec) {
      EXPECT_FALSE(settings.Set(g_codecKey, OwnedId(c.codec)).IsError());
    }
    if (c.audioCodec) {
      EXPECT_FALSE(settings.Set(g_audioCodecKey, OwnedId(c.audioCodec)).IsError());
    }
    const std::string path = PathFor(std::string("refused.") + c.saver);
    std::filesystem::remove(path);
    Result<host::ExportSummary> written = Export(Pattern(c.width, c.height), Request(c.saver, path, settings));
    ASSERT_TRUE(written.IsError());
    EXPECT_NE(ErrorText(written).find(c.message), std::string::npos) << ErrorText(written);
    if (c.leavesNoFile) {
      EXPECT_FALSE(std::filesystem::exists(path));
    }
  }
}

// keyframes is the largest distance of key frames for H.264 and WMV1; WMV2 and WMV3 drop
// it and keep their encoders' own distance, which is longer than this second of movie.
TEST_F(ExportRoundTripTest, KeyFrameDistanceReachesTheCodecsThatTakeIt) {
  const struct {
    const char* saver;
    const char* codec;
    bool honoured;
  } kCases[] = {{"mp4", "H.264", true}, {"wmv", "WMV1", true}, {"wmv", "WMV2", false}, {"asf", "WMV3", false}};
  for (const auto& c : kCases) {
    SCOPED_TRACE(std::string(c.saver) + " " + c.codec);
    DataDictionary settings;
    EXPECT_FALSE(settings.Set(g_codecKey, OwnedId(c.codec)).IsError());
    EXPECT_FALSE(settings.Set(g_keyframesKey, Int32(5)).IsError());
    TestPatternOptions pattern = Pattern();
    pattern.toneHertz = 0;
    const std::string path = PathFor(std::string("keys_") + c.codec + "." + c.saver);
    Result<host::ExportSummary> written = Export(pattern, Request(c.saver, path, settings));
    ASSERT_FALSE(written.IsError()) << ErrorText(written);
    const std::vector<int> keys = tessel::fixtures::ReferenceKeyFrames(path);
    if (c.honoured) {
      EXPECT_EQ(keys, (std::vector<int>{0, 5, 10, 15, 20}));
    } else {
      EXPECT_EQ(keys, std::vector<int>{0});
    }
  }
}

// The sound is the file's first stream; without sound the pictures are.
TEST_F(ExportRoundTripTest, SoundTakesTheLowerStreamIndex) {
  for (Float64 tone : {440.0, 0.0}) {
    TestPatternOptions pattern = Pattern();
    pattern.toneHertz = tone;
    const std::string path = PathFor(tone > 0 ? "with_sound.mp4" : "silent.mp4");
    ASSERT_FALSE(Export(pattern, Request("mp4", path, DataDictionary())).IsError());
    EXPECT_EQ(tessel::fixtures::ReferenceStreamIndex(path, AVMEDIA_TYPE_VIDEO), tone > 0 ? 1 : 0);
    EXPECT_EQ(tessel::fixtures::ReferenceStreamIndex(path, AVMEDIA_TYPE_AUDIO), tone > 0 ? 0 : -1);
  }
}

// MP4 takes widths in steps of 16 and even heights, the others even sizes; the part of a
// frame beyond the picture is black.
TEST_F(ExportRoundTripTest, SizesAreAlignedForTheContainer) {
  const struct {
    const char* saver;
    Int width, height, alignedWidth, alignedHeight;
  } kCases[] = {{"mp4", 1, 1, 16, 2}, {"asf", 1, 1, 2, 2}, {"mp4", 161, 121, 176, 122}, {"asf", 161, 121, 162, 122}};
  for (const auto& c : kCases) {
    SCOPED_TRACE(std::string(c.saver) + " " + std::to_string(c.width) + "x" + std::to_string(c.height));
    const std::string path = PathFor("aligned_" + std::to_string(c.width) + "." + c.saver);
    Result<host::ExportSummary> written = Export(Pattern(c.width, c.height), Request(c.saver, path, DataDictionary()));
    ASSERT_FALSE(written.IsError()) << ErrorText(written);
    WrittenMovie movie(path);
    ASSERT_TRUE(movie.IsOpen());
    std::vector<host::ImageFrame> frames = movie.Frames(1, FPS);
    EXPECT_EQ(frames[0].width, c.alignedWidth);
    EXPECT_EQ(frames[0].height, c.alignedHeight);
    if (c.width > 16) {
      const uint8_t* corner = frames[0].pixels.data() + (c.alignedHeight - 1) * frames[0].bytesPerLine +
                              4 * (c.alignedWidth - 1);
      EXPECT_LT(corner[0] + corner[1] + corner[2], 3 * 24) << "black beyond the picture";
    }
  }
}

// A disk that fills up fails the export with the system's message, whether a frame or
// the finishing of the file meets it.
TEST_F(ExportRoundTripTest, AFullDiskFailsTheExport) {
  for (LONGLONG space : {LONGLONG(0), LONGLONG(4000)}) {
    SCOPED_TRACE(space);
    TesselPlatformSetSinkDiskSpace(space);
    Result<host::ExportSummary> written =
        Export(Pattern(), Request("mp4", PathFor("full" + std::to_string(space) + ".mp4"), DataDictionary()));
    TesselPlatformSetSinkDiskSpace(-1);
    ASSERT_TRUE(written.IsError());
    EXPECT_NE(ErrorText(written).find("There is not enough space on the disk."), std::string::npos)
        << ErrorText(written);
  }
}

}  // namespace
}  // namespace vorna
