// The tessel binary run as a process on the host's test module: the commands' output
// and files, and the exit code of each kind of failure.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>

#include "png_file.h"
#include "tessel_process.h"

namespace tessel::testing {
namespace {

using nlohmann::json;

class PatternCommandsTest : public ::testing::Test {
 protected:
  void SetUp() override {
    _directory = MakeTempDirectory();
    ASSERT_FALSE(_directory.empty());
  }
  void TearDown() override { std::filesystem::remove_all(_directory); }

  TesselRun Run(const std::vector<std::string>& arguments) {
    std::vector<std::string> all = PatternModule();
    all.insert(all.end(), arguments.begin(), arguments.end());
    return RunTessel(all, _directory);
  }
  std::string InDirectory(const std::string& name) const { return _directory + "/" + name; }

  // Every pixel of a pattern frame is grey at the frame time in tenths of a second.
  void ExpectPatternFrame(const std::string& path, int value) {
    PngPicture picture;
    ASSERT_TRUE(ReadPng(path, picture)) << path;
    EXPECT_EQ(picture.width, 4);
    EXPECT_EQ(picture.height, 2);
    EXPECT_EQ(picture.channels, 3) << "opaque frames are written as RGB";
    for (int y = 0; y < 2; ++y)
      for (int x = 0; x < 4; ++x)
        for (int c = 0; c < 3; ++c) EXPECT_EQ(picture.At(x, y)[c], value) << path << " at " << x << "," << y;
  }

  std::string _directory;
};

TEST_F(PatternCommandsTest, ProbeJsonListsTheDetectingFormatsAndEachStreamsFormats) {
  TesselRun run = Run({"probe", "memory://pattern.clip", "--json"});
  ASSERT_EQ(run.exitCode, 0) << run.err;
  json probe = json::parse(run.out);
  EXPECT_EQ(probe["url"], "memory://pattern.clip");
  EXPECT_EQ(probe["detected"], json::array({"test.pattern"}));
  ASSERT_EQ(probe["streams"].size(), 1u);
  const json& stream = probe["streams"][0];
  EXPECT_EQ(stream["index"], 0);
  EXPECT_EQ(stream["kind"], "video");
  ASSERT_EQ(stream["formats"].size(), 1u);
  const json& format = stream["formats"][0];
  EXPECT_EQ(format["key"], 1);
  EXPECT_EQ(format["pixelformat"], "vorna.PixelFormats.BGRX:u8");
  EXPECT_EQ(format["width"], 4);
  EXPECT_EQ(format["height"], 2);
  EXPECT_TRUE(format["fps"].is_null()) << "a property the format lacks is null";
}

TEST_F(PatternCommandsTest, FrameWritesTheDeliveredPictureAndItsProperties) {
  // Global options may follow the command.
  TesselRun run = Run({"frame", "memory://pattern.clip", "--at", "0.3", "-o", "f.png", "--json", "--set",
                       "g_enableDebugBreak=false"});
  ASSERT_EQ(run.exitCode, 0) << run.err;
  json frame = json::parse(run.out);
  EXPECT_DOUBLE_EQ(frame["sampletime"].get<double>(), 0.3);
  EXPECT_EQ(frame["width"], 4);
  EXPECT_EQ(frame["height"], 2);
  EXPECT_TRUE(frame["skippedframes"].is_null());
  ExpectPatternFrame(InDirectory("f.png"), 3);
}

TEST_F(PatternCommandsTest, SquareOnAStreamWithSquarePixelsDeliversItsNativeFormat) {
  TesselRun run = Run({"frame", "memory://pattern.clip", "--at", "0.5", "--square", "-o", "square.png"});
  ASSERT_EQ(run.exitCode, 0) << run.err;
  ExpectPatternFrame(InDirectory("square.png"), 5);
}

TEST_F(PatternCommandsTest, FramesEveryWritesNumberedPicturesUntilTheStreamEnds) {
  TesselRun run = Run({"frames", "memory://pattern.clip", "--every", "0.25", "-o", "out"});
  ASSERT_EQ(run.exitCode, 0) << run.err;
  ExpectPatternFrame(InDirectory("out/frame_0001.png"), 0);
  ExpectPatternFrame(InDirectory("out/frame_0004.png"), 8);
  EXPECT_FALSE(std::filesystem::exists(InDirectory("out/frame_0005.png")));
}

TEST_F(PatternCommandsTest, FormatsListsTheRegisteredFormatsAndHandlers) {
  TesselRun run = Run({"formats"});
  ASSERT_EQ(run.exitCode, 0) << run.err;
  EXPECT_NE(run.out.find("file formats (vorna.FileFormats):\n  test.pattern\n"), std::string::npos) << run.out;
  EXPECT_NE(run.out.find("file format handlers (vorna.FileFormatHandlers):\n  test.pattern\n"), std::string::npos);
}

TEST_F(PatternCommandsTest, EachKindOfFailureHasItsExitCodeAndMessage) {
  TesselRun pastEnd = Run({"frame", "memory://pattern.clip", "--at", "1.5", "-o", "late.png"});
  EXPECT_EQ(pastEnd.exitCode, 4);
  EXPECT_NE(pastEnd.err.find("End of stream"), std::string::npos) << pastEnd.err;
  EXPECT_FALSE(std::filesystem::exists(InDirectory("late.png")));

  TesselRun missing = Run({"probe", "nosuch.mp4"});
  EXPECT_EQ(missing.exitCode, 2);
  EXPECT_EQ(missing.err, "tessel: nosuch.mp4: no such file\n");

  std::ofstream(InDirectory("notes.txt")) << "not a movie\n";
  TesselRun text = Run({"probe", "notes.txt"});
  EXPECT_EQ(text.exitCode, 3);
  EXPECT_NE(text.err.find("No reader for file://"), std::string::npos) << text.err;

  TesselRun noModule = Run({"--module", "net.vorna.test.no_such_module", "probe", "memory://pattern.clip"});
  EXPECT_EQ(noModule.exitCode, 5);
  EXPECT_NE(noModule.err.find("cannot load net.vorna.test.no_such_module"), std::string::npos) << noModule.err;

  TesselRun noLength = Run({"sheet", "memory://pattern.clip", "-o", "sheet.png"});
  EXPECT_EQ(noLength.exitCode, 1);
  EXPECT_NE(noLength.err.find("does not tell its length"), std::string::npos) << noLength.err;
}

TEST_F(PatternCommandsTest, BadUsageIsRefusedBeforeAnythingIsRead) {
  const std::vector<std::vector<std::string>> lines = {
      {"frame", "memory://pattern.clip", "-o", "f.png"},
      {"frame", "memory://pattern.clip", "--at", "-1", "-o", "f.png"},
      {"frames", "memory://pattern.clip", "--every", "1", "--count", "3", "-o", "out"},
      {"frames", "memory://pattern.clip", "--count", "0", "-o", "out"},
      {"sheet", "memory://pattern.clip", "-o", "s.png", "--columns", "many"},
      {"probe"},
      {"probe", "a.mp4", "b.mp4"},
      {"probe", "a.mp4", "--verbose"},
      {"transcode", "a.mp4"},
      {"--set", "novalue"},
      {"--set", "noSuchVariable=true", "formats"},
      {},
  };
  for (const auto& line : lines) {
    TesselRun run = Run(line);
    EXPECT_EQ(run.exitCode, 64) << ::testing::PrintToString(line) << ": " << run.err;
    EXPECT_FALSE(run.err.empty());
  }
  TesselRun help = Run({"help"});
  EXPECT_EQ(help.exitCode, 0);
  EXPECT_NE(help.out.find("exit codes:"), std::string::npos);
}

}  // namespace
}  // namespace tessel::testing
