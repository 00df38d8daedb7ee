// The export session driver through the host's own loading path: the test-pattern
// source, or the test module's reader, through the export bridge into the test module's
// recording saver, which does what a movie saver does and writes down what it got.
#include "vorna/translationunit.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>

#include "host_environment.h"
#include "test_module/recording_format.h"
#include "vorna/errorbase.h"
#include "vorna/resourceid.h"
#include "vorna_export.h"

namespace vorna {
namespace {

VORNA_DEFINE_RESOURCE_ID(g_codec, "codec");
VORNA_DEFINE_RESOURCE_ID(g_audioCodec, "audio.codec");
VORNA_DEFINE_RESOURCE_ID(g_disableSrgb, "disable srgb conversion");

using tessel::testmodule::Recording;
using vorna::host::ExportRequest;
using vorna::host::ExportSession;
using vorna::host::TestPatternOptions;

std::string MessageOf(ErrorWord error) {
  Result<CString> text = ErrorOf(error).GetMessage().GetCString();
  return text.IsError() ? std::string() : std::string(text.GetValue().GetCString());
}

class ExportSessionTest : public ::testing::Test {
 protected:
  void SetUp() override {
    Result<vorna::host::LoadedModule*> loaded = vorna::host::LoadModule("net.vorna.test.media");
    ASSERT_FALSE(loaded.IsError());
    _module = loaded.GetValue();
    _directory = std::filesystem::temp_directory_path() /
                 ("tessel-export-" + std::to_string(::testing::UnitTest::GetInstance()->random_seed()) + "-" +
                  ::testing::UnitTest::GetInstance()->current_test_info()->name());
    std::filesystem::create_directories(_directory);
  }
  void TearDown() override {
    vorna::host::UnloadModule(_module);
    std::filesystem::remove_all(_directory);
  }

  std::string OutputPath() const { return (_directory / "movie.rec").string(); }

  ExportRequest Request() const {
    ExportRequest request;
    request.saver = "rec";
    EXPECT_FALSE(request.output.Set(OutputPath().c_str()).IsError());
    return request;
  }

  static TestPatternOptions Pattern(Int width, Int height, Float64 fps, Float64 duration) {
    TestPatternOptions pattern;
    pattern.width = width;
    pattern.height = height;
    pattern.fps = fps;
    pattern.duration = duration;
    pattern.toneHertz = 1000;
    pattern.sampleRate = 8000;
    return pattern;
  }

  // Runs the export and reads what the saver recorded.
  Result<vorna::host::ExportSummary> Export(const TestPatternOptions& pattern, const ExportRequest& request,
                                            const vorna::host::ExportProgressCallback& progress = nullptr) {
    VORNA_ASSIGN_OR_RETURN(std::unique_ptr<ExportSession> session, ExportSession::OpenTestPattern(pattern, request));
    return session->Run(progress);
  }

  Recording ReadOutput() const {
    Recording recording;
    EXPECT_TRUE(tessel::testmodule::ReadRecording(OutputPath(), recording)) << OutputPath();
    return recording;
  }

  vorna::host::LoadedModule* _module = nullptr;
  std::filesystem::path _directory;
};

TEST_F(ExportSessionTest, WritesEveryFrameOfThePatternAndItsWholeToneWithProgress) {
  TestPatternOptions pattern = Pattern(48, 32, 10.0, 1.0);
  std::vector<vorna::host::ExportProgress> reports;
  Result<vorna::host::ExportSummary> summary =
      Export(pattern, Request(), [&](const vorna::host::ExportProgress& progress) {
        reports.push_back(progress);
        return true;
      });
  ASSERT_FALSE(summary.IsError()) << MessageOf(summary.GetError());
  EXPECT_EQ(summary.GetValue().frames, 10);
  EXPECT_DOUBLE_EQ(summary.GetValue().movieSeconds, 1.0);
  ASSERT_EQ(reports.size(), 10u);
  EXPECT_EQ(reports[3].frames, 4);
  EXPECT_EQ(reports[3].frameCount, 10);

  Recording recording = ReadOutput();
  EXPECT_EQ(recording.header["width"], "48");
  EXPECT_EQ(recording.header["height"], "32");
  EXPECT_DOUBLE_EQ(std::stod(recording.header["fps"]), 10.0);
  EXPECT_EQ(recording.header["soundchannels"], "2");
  EXPECT_EQ(recording.header["soundbits"], "16");
  ASSERT_EQ(recording.sound.size(), 8000u * 4) << "a second of 16-bit stereo at 8 kHz";
  const auto* samples = reinterpret_cast<const Int16*>(recording.sound.data());
  for (Int i : {0, 1, 2, 3999, 7999}) {
    EXPECT_EQ(samples[2 * i], vorna::host::TestPatternTone(pattern, i)) << i;
    EXPECT_EQ(samples[2 * i + 1], samples[2 * i]) << i;
  }
  ASSERT_EQ(recording.frames.size(), 10u);
  for (size_t n = 0; n < recording.frames.size(); ++n) {
    const tessel::testmodule::RecordedFrame& frame = recording.frames[n];
    EXPECT_NEAR(frame.time, 0.1 * double(n), 1e-6);
    EXPECT_EQ(frame.pixelFormat, "vorna.PixelFormats.RGBA:u8") << "the frame keeps the format it came in";
    EXPECT_GE(frame.fetches, 1);
    ASSERT_EQ(frame.rows.size(), 48u * 32 * 4);
    for (int y : {0, 13, 31})
      for (int x : {0, 47}) {
        const uint8_t* pixel = &frame.rows[size_t((y * 48 + x) * 4)];
        EXPECT_EQ(pixel[0], n) << "blue is the frame";
        EXPECT_EQ(pixel[1], y) << "green is the line";
        EXPECT_EQ(pixel[2], x) << "red is the column";
      }
  }
}

// The codecs of the recording saver ask for the three formats a movie writer asks for.
TEST_F(ExportSessionTest, RowsArriveInThePixelFormatTheSaverAsksFor) {
  const struct {
    const char* codec;
    ObjectUseRecord* format;
  } kCodecs[] = {{"BGRX", &g_pixelFormatBGRXu8}, {"BGR", &g_pixelFormatBGRu8}, {"YUY2", &g_pixelFormatYUVi422a}};
  TestPatternOptions pattern = Pattern(16, 6, 5.0, 0.4);
  PixelFormat rgba = GetPixelFormat(g_pixelFormatRGBAu8);
  for (const auto& c : kCodecs) {
    SCOPED_TRACE(c.codec);
    ExportRequest request = Request();
    ASSERT_FALSE(request.settings.Set(g_codec, MakeData(Id(c.codec))).IsError());
    ASSERT_FALSE(Export(pattern, request).IsError());
    Recording recording = ReadOutput();
    ASSERT_EQ(recording.frames.size(), 2u);
    // Row 5 of the pattern's frame 1, converted by the host's own row conversion.
    PixelFormat target = GetPixelFormat(*c.format);
    size_t bytesPerPixel = size_t(target.GetBitsPerPixel() / 8);
    std::vector<UChar> source(16 * 4);
    for (Int x = 0; x < 16; ++x) vorna::host::TestPatternPixel(1, x, 5, &source[size_t(4 * x)]);
    std::vector<UChar> expected(16 * bytesPerPixel);
    target.GetConvertPixelFunc(rgba, rgba.GetChannelOffsets(), target.GetChannelOffsets(), nullptr, nullptr)
        .GetValue()(expected.data(), source.data(), 16, 32);
    const std::vector<uint8_t>& rows = recording.frames[1].rows;
    ASSERT_EQ(rows.size(), 16 * 6 * bytesPerPixel);
    EXPECT_TRUE(std::equal(expected.begin(), expected.end(), rows.begin() + Int(5 * 16 * bytesPerPixel)));
  }
}

// Frames in linear light reach a saver in sRGB unless its settings ask for them as they
// are. The pattern's red is its column: linear 128 is sRGB 188, linear 1 is sRGB 13.
TEST_F(ExportSessionTest, DisablingSrgbConversionHandsFramesOverInTheirOwnProfile) {
  TestPatternOptions pattern = Pattern(130, 2, 5.0, 0.2);
  pattern.colorProfile = "linear_rgb";
  const struct {
    bool disable;
    const char* asked;
    uint8_t red1;
    uint8_t red128;
  } kCases[] = {{false, "srgb", 13, 188}, {true, "linear_rgb", 1, 128}};
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.asked);
    ExportRequest request = Request();
    ASSERT_FALSE(request.settings.Set(g_disableSrgb, MakeData(Bool(c.disable))).IsError());
    ASSERT_FALSE(Export(pattern, request).IsError());
    Recording recording = ReadOutput();
    ASSERT_EQ(recording.frames.size(), 1u);
    EXPECT_EQ(recording.frames[0].profile, "linear_rgb");
    EXPECT_EQ(recording.frames[0].askedProfile, c.asked);
    const std::vector<uint8_t>& rows = recording.frames[0].rows;
    EXPECT_EQ(rows[1 * 4 + 2], c.red1);
    EXPECT_EQ(rows[128 * 4 + 2], c.red128);
    EXPECT_EQ(rows[128 * 4 + 3], 255) << "the X byte";
  }
}

// The stretch from 0.5 s to 1.5 s at 4 fps: the movie starts at 0 and its frames are the
// source's frames at 0.5, 0.75, 1.0 and 1.25 s; the sound is cut to the same stretch.
TEST_F(ExportSessionTest, StartEndAndFrameRateChooseTheSourceFrames) {
  TestPatternOptions pattern = Pattern(8, 4, 10.0, 2.0);
  ExportRequest request = Request();
  request.from = 0.5;
  request.to = 1.5;
  request.fps = 4.0;
  Result<std::unique_ptr<ExportSession>> session = ExportSession::OpenTestPattern(pattern, request);
  ASSERT_FALSE(session.IsError());
  EXPECT_EQ(session.GetValue()->GetFrameCount(), 4);
  EXPECT_DOUBLE_EQ(session.GetValue()->GetFps(), 4.0);
  ASSERT_FALSE(session.GetValue()->Run(nullptr).IsError());
  Recording recording = ReadOutput();
  EXPECT_DOUBLE_EQ(std::stod(recording.header["fps"]), 4.0);
  ASSERT_EQ(recording.frames.size(), 4u);
  const int kSourceFrames[] = {5, 7, 10, 12};
  for (size_t n = 0; n < 4; ++n) {
    EXPECT_NEAR(recording.frames[n].time, 0.25 * double(n), 1e-6);
    EXPECT_EQ(recording.frames[n].rows[0], kSourceFrames[n]) << "blue is the source frame";
  }
  ASSERT_EQ(recording.sound.size(), 8000u * 4);
  EXPECT_EQ(reinterpret_cast<const Int16*>(recording.sound.data())[2], vorna::host::TestPatternTone(pattern, 4001));
}

// Float sound, as the platform delivers float and 32-bit files, reaches the saver as
// 16-bit integers: full scale 1.0 is 32767.
TEST_F(ExportSessionTest, FloatSoundBecomesSixteenBitIntegers) {
  TestPatternOptions pattern = Pattern(8, 4, 10.0, 0.5);
  pattern.floatSound = true;
  ASSERT_FALSE(Export(pattern, Request()).IsError());
  Recording recording = ReadOutput();
  EXPECT_EQ(recording.header["soundbits"], "16");
  ASSERT_EQ(recording.sound.size(), 4000u * 4);
  const auto* samples = reinterpret_cast<const Int16*>(recording.sound.data());
  for (Int i : {1, 2, 3999}) {
    Int16 tone = vorna::host::TestPatternTone(pattern, i);
    EXPECT_EQ(samples[2 * i], Int16(std::lround(Float64(tone) / 32768.0 * 32767.0))) << i;
  }
}

TEST_F(ExportSessionTest, WithoutAudioTheSaverGetsNoSound) {
  ExportRequest request = Request();
  request.withAudio = false;
  Result<vorna::host::ExportSummary> summary = Export(Pattern(8, 4, 10.0, 0.3), request);
  ASSERT_FALSE(summary.IsError());
  EXPECT_FALSE(summary.GetValue().withAudio);
  Recording recording = ReadOutput();
  EXPECT_EQ(recording.header["soundchannels"], "0");
  EXPECT_EQ(recording.frames.size(), 3u);
}

// The saver's refusals reach the caller as the saver gave them, and a movie whose first
// frame is refused leaves no file.
TEST_F(ExportSessionTest, RefusalsOfTheSaverPassThroughUnchanged) {
  const struct {
    const char* codec;
    const char* audioCodec;
    Int width;
    ObjectUseRecord* errorClass;
    const char* message;
  } kCases[] = {
      {"WMV3", "aac", 8, &g_IllegalArgumentErrorObject, "Unsupported Codec for this container format: WMV3."},
      {"BGRX", "opus", 8, &g_MediaSessionWrongTypeErrorObject, "Invalid audio codec: opus"},
      {"BGRX", "aac", 4097, &g_IllegalArgumentErrorObject, "Maximum resolution exceeded."},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.message);
    ExportRequest request = Request();
    ASSERT_FALSE(request.settings.Set(g_codec, MakeData(Id(c.codec))).IsError());
    ASSERT_FALSE(request.settings.Set(g_audioCodec, MakeData(Id(c.audioCodec))).IsError());
    Result<vorna::host::ExportSummary> summary = Export(Pattern(c.width, 2, 10.0, 0.3), request);
    ASSERT_TRUE(summary.IsError());
    EXPECT_TRUE(IsErrorOfClass(summary.GetError(), *c.errorClass));
    EXPECT_EQ(MessageOf(summary.GetError()), c.message);
    EXPECT_FALSE(std::filesystem::exists(OutputPath()));
  }
}

TEST_F(ExportSessionTest, AStopAskedForByTheProgressEndsTheRunAfterThatFrame) {
  Result<vorna::host::ExportSummary> summary =
      Export(Pattern(8, 4, 10.0, 1.0), Request(), [](const vorna::host::ExportProgress& progress) {
        return progress.frames < 3;
      });
  ASSERT_TRUE(summary.IsError());
  EXPECT_TRUE(IsErrorOfClass(summary.GetError(), g_ThreadCancelledErrorObject));
  EXPECT_EQ(ReadOutput().frames.size(), 3u) << "the saver was closed with what it had";
}

// The test module's reader tells neither frame rate nor length: the saver refuses a
// stream without a frame rate, and with one given the export runs to the source's end.
TEST_F(ExportSessionTest, AnExportFromAUrlRunsToTheEndOfItsSource) {
  Url input;
  ASSERT_FALSE(input.Set("memory://pattern-6x4.clip").IsError());
  Result<std::unique_ptr<ExportSession>> withoutRate = ExportSession::Open(input, Request());
  ASSERT_TRUE(withoutRate.IsError());
  EXPECT_EQ(MessageOf(withoutRate.GetError()), "MEDIAFORMAT::VIDEO::FPS is missing.");

  ExportRequest request = Request();
  request.fps = 10.0;
  Result<std::unique_ptr<ExportSession>> session = ExportSession::Open(input, request);
  ASSERT_FALSE(session.IsError()) << MessageOf(session.GetError());
  EXPECT_EQ(session.GetValue()->GetHandler(), "test.pattern");
  EXPECT_EQ(session.GetValue()->GetFrameCount(), 0) << "the length is unknown";
  Result<vorna::host::ExportSummary> summary = session.GetValue()->Run(nullptr);
  ASSERT_FALSE(summary.IsError());
  EXPECT_EQ(summary.GetValue().frames, 10);
  Recording recording = ReadOutput();
  EXPECT_EQ(recording.header["width"], "6");
  ASSERT_EQ(recording.frames.size(), 10u);
  EXPECT_EQ(recording.frames[7].rows[0], 7) << "the reader's value is the time in tenths";
  EXPECT_EQ(recording.frames[7].pixelFormat, "vorna.PixelFormats.BGRX:u8");
}

TEST_F(ExportSessionTest, WhatTheInputLacksFailsBeforeAnythingIsWritten) {
  ExportRequest pastEnd = Request();
  pastEnd.from = 2.0;
  ExportRequest noSuchStream = Request();
  noSuchStream.videoStream = 1;
  ExportRequest noSuchSaver = Request();
  noSuchSaver.saver = "mov";
  const struct {
    const ExportRequest* request;
    ObjectUseRecord* errorClass;
  } kCases[] = {{&pastEnd, &g_MediaStreamEOFErrorObject},
                {&noSuchStream, &g_UnsupportedArgumentErrorObject},
                {&noSuchSaver, &g_IllegalArgumentErrorObject}};
  for (const auto& c : kCases) {
    Result<std::unique_ptr<ExportSession>> session = ExportSession::OpenTestPattern(Pattern(8, 4, 10.0, 1.0), *c.request);
    ASSERT_TRUE(session.IsError());
    EXPECT_TRUE(IsErrorOfClass(session.GetError(), *c.errorClass)) << MessageOf(session.GetError());
  }
  EXPECT_FALSE(std::filesystem::exists(OutputPath()));
}

TEST_F(ExportSessionTest, TheSaverStandsInTheRegistryWhileItsModuleIsLoaded) {
  auto entered = [] {
    std::vector<std::string> savers = vorna::host::ListRegistry("vorna.ImageSavers");
    return std::count(savers.begin(), savers.end(), "rec");
  };
  EXPECT_EQ(entered(), 1);
  vorna::host::UnloadModule(_module);
  EXPECT_EQ(entered(), 0);
  Result<vorna::host::LoadedModule*> again = vorna::host::LoadModule("net.vorna.test.media");
  ASSERT_FALSE(again.IsError());
  _module = again.GetValue();
}

}  // namespace
}  // namespace vorna
