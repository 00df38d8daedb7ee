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

}  // namespace
}  // namespace vorna
