// The tessel binary run as a process on the generated clips, through the media module.
#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>

#include "fixtures.h"
#include "tessel_process.h"

namespace tessel::testing {
namespace {

using nlohmann::json;
namespace fx = tessel::fixtures;

class ClipCommandsTest : public ::testing::Test {
 protected:
  void SetUp() override {
    _directory = MakeTempDirectory();
    ASSERT_FALSE(_directory.empty());
  }
  void TearDown() override { std::filesystem::remove_all(_directory); }

  TesselRun Run(const std::vector<std::string>& arguments) { return RunTessel(arguments, _directory); }

  std::string _directory;
};

TEST_F(ClipCommandsTest, ProbeJsonGivesTheMovieAndItsSound) {
  TesselRun run = Run({"probe", fx::Path(fx::kMovieAac.name), "--json"});
  ASSERT_EQ(run.exitCode, 0) << run.err;
  json probe = json::parse(run.out);
  EXPECT_EQ(probe["url"], "file://" + fx::Path(fx::kMovieAac.name));
  EXPECT_FALSE(probe["detected"].empty());
  ASSERT_EQ(probe["streams"].size(), 2u) << run.out;
  const json& video = probe["streams"][0];
  EXPECT_EQ(video["kind"], "video");
  const json& native = video["formats"][0];
  EXPECT_EQ(native["key"], 1);
  EXPECT_EQ(native["width"], fx::kMovieAac.width);
  EXPECT_EQ(native["height"], fx::kMovieAac.height);
  EXPECT_DOUBLE_EQ(native["fps"].get<double>(), 25.0);
  EXPECT_NEAR(native["duration"].get<double>(), 2.0, 0.05);
  const json& audio = probe["streams"][1];
  EXPECT_EQ(audio["kind"], "audio");
  EXPECT_EQ(audio["formats"][0]["key"], 0);
  EXPECT_EQ(audio["formats"][0]["channelcount"], 2);
  EXPECT_EQ(audio["formats"][0]["bitsperchannel"], 16);
  EXPECT_DOUBLE_EQ(audio["formats"][0]["samplerate"].get<double>(), 48000.0);
}

TEST_F(ClipCommandsTest, ProbeShowsTheSquarePixelVariantOfAnAnamorphicMovie) {
  TesselRun run = Run({"probe", fx::Path(fx::kAnamorphicPal.name), "--json"});
  ASSERT_EQ(run.exitCode, 0) << run.err;
  json probe = json::parse(run.out);
  const json& formats = probe["streams"][0]["formats"];
  ASSERT_EQ(formats.size(), 2u) << run.out;
  EXPECT_EQ(formats[1]["key"], -1);
  EXPECT_EQ(formats[1]["width"], 768);
  EXPECT_EQ(formats[1]["height"], 576);
  EXPECT_DOUBLE_EQ(formats[1]["aspectratio"].get<double>(), 1.0);
}

TEST_F(ClipCommandsTest, FilesThatCannotBeReadHaveTheirExitCodes) {
  TesselRun text = Run({"probe", fx::Path(fx::kText)});
  EXPECT_EQ(text.exitCode, 3) << text.err;
  EXPECT_NE(text.err.find("No reader for"), std::string::npos) << text.err;
  EXPECT_EQ(Run({"probe", fx::Path(fx::kEmpty)}).exitCode, 3);
  EXPECT_EQ(Run({"probe", fx::Path("no_such_clip.mp4")}).exitCode, 2);
  EXPECT_EQ(Run({"probe", fx::Path("")}).exitCode, 3) << "a directory is no media file";
}

}  // namespace
}  // namespace tessel::testing
