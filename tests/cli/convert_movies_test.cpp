// tessel convert through the media module's savers: a generated clip with sound
// becomes a movie of each container, with the saver's default codecs or the one asked,
// and FFmpeg reads back what was written.
#include <gtest/gtest.h>

#include <filesystem>

#include "fixtures.h"
#include "reference_decoder.h"
#include "tessel_process.h"

namespace tessel::testing {
namespace {

namespace fx = tessel::fixtures;

class ConvertMoviesTest : public ::testing::Test {
 protected:
  void SetUp() override {
    _directory = MakeTempDirectory();
    ASSERT_FALSE(_directory.empty());
  }
  void TearDown() override { std::filesystem::remove_all(_directory); }

  std::string _directory;
};

TEST_F(ConvertMoviesTest, EachContainerGetsItsDefaultCodecsOrTheOneAsked) {
  const struct {
    const char* output;
    std::vector<std::string> options;
    const char* video;
    const char* audio;
  } kCases[] = {
      {"out.mp4", {}, "h264", "aac"},
      {"out.3gp", {}, "h264", "aac"},
      {"out.asf", {}, "h264", "aac"},
      {"out.wmv", {}, "wmv3", "aac"},
      {"out2.wmv", {"--codec", "WMV2", "--audio-codec", "mp3"}, "wmv2", "mp3"},
      {"out.mp4", {"--audio-codec", "mp3"}, "h264", "mp3"},
  };
  for (const auto& c : kCases) {
    std::vector<std::string> arguments = MediaAndTestModules();
    arguments.insert(arguments.end(), {"convert", fx::Path(fx::kMovieAac.name), c.output, "--to", "1"});
    arguments.insert(arguments.end(), c.options.begin(), c.options.end());
    TesselRun run = RunTessel(arguments, _directory);
    ASSERT_EQ(run.exitCode, 0) << c.output << ": " << run.err;
    const std::string path = _directory + "/" + c.output;
    EXPECT_EQ(fx::ReferenceCodecName(path, AVMEDIA_TYPE_VIDEO), c.video) << c.output;
    EXPECT_EQ(fx::ReferenceCodecName(path, AVMEDIA_TYPE_AUDIO), c.audio) << c.output;
    fx::ReferenceDecoder decoder(path, AV_PIX_FMT_BGR24, 320, 240, 320 * 3);
    fx::ReferencePicture picture;
    int pictures = 0;
    while (decoder.Next(picture)) ++pictures;
    EXPECT_EQ(pictures, 25) << c.output << ": the first second at 25 frames a second";
  }
}

}  // namespace
}  // namespace tessel::testing
