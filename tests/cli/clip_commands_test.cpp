// The tessel binary run as a process on the generated clips, through the media module.
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>

#include "fixtures.h"
#include "frame_code.h"
#include "png_file.h"
#include "tessel_process.h"

namespace tessel::testing {
namespace {

using nlohmann::json;
namespace fx = tessel::fixtures;

uint32_t Little(const std::string& bytes, size_t at, int size) {
  uint32_t value = 0;
  for (int i = size - 1; i >= 0; --i) value = value << 8 | uint8_t(bytes[at + size_t(i)]);
  return value;
}

class ClipCommandsTest : public ::testing::Test {
 protected:
  void SetUp() override {
    _directory = MakeTempDirectory();
    ASSERT_FALSE(_directory.empty());
  }
  void TearDown() override { std::filesystem::remove_all(_directory); }

  TesselRun Run(const std::vector<std::string>& arguments) { return RunTessel(arguments, _directory); }
  std::string InDirectory(const std::string& name) const { return _directory + "/" + name; }

  // The frame number the picture's code says, read from its brightness.
  static int FrameNumberOf(const PngPicture& picture) {
    auto luma = [&](int x, int y) {
      const uint8_t* p = picture.At(x, y);
      return (p[0] * 77 + p[1] * 150 + p[2] * 29) >> 8;
    };
    return fx::ReadFrameCode(luma, picture.width, picture.height);
  }

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
  EXPECT_TRUE(native["starttime"].is_null()) << "the stream does not know its start";
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

TEST_F(ClipCommandsTest, FrameWritesThePictureOfTheFrameForTheTime) {
  for (int wanted : {0, 13, 37}) {
    std::string seconds = std::to_string((wanted + 0.5) / 25.0);
    std::string name = "frame" + std::to_string(wanted) + ".png";
    TesselRun run = Run({"frame", fx::Path(fx::kMovieAac.name), "--at", seconds, "-o", name, "--json"});
    ASSERT_EQ(run.exitCode, 0) << run.err;
    json frame = json::parse(run.out);
    EXPECT_NEAR(frame["sampletime"].get<double>(), wanted / 25.0, 1e-6);
    EXPECT_NEAR(frame["sampleduration"].get<double>(), 0.04, 1e-6);
    PngPicture picture;
    ASSERT_TRUE(ReadPng(InDirectory(name), picture));
    EXPECT_EQ(picture.width, fx::kMovieAac.width);
    EXPECT_EQ(picture.height, fx::kMovieAac.height);
    EXPECT_EQ(FrameNumberOf(picture), wanted);
  }
}

TEST_F(ClipCommandsTest, SquareFrameOfAnAnamorphicMovieHasTheSquarePixelSize) {
  TesselRun run = Run({"frame", fx::Path(fx::kAnamorphicPal.name), "--at", "0.3", "--square", "-o", "sq.png"});
  ASSERT_EQ(run.exitCode, 0) << run.err;
  PngPicture picture;
  ASSERT_TRUE(ReadPng(InDirectory("sq.png"), picture));
  EXPECT_EQ(picture.width, 768);
  EXPECT_EQ(picture.height, 576);
  EXPECT_EQ(FrameNumberOf(picture), 7);
}

TEST_F(ClipCommandsTest, FramesAndSheetSpreadTheirFramesOverTheMovie) {
  TesselRun frames = Run({"frames", fx::Path(fx::kMovieAac.name), "--count", "4", "-o", "out"});
  ASSERT_EQ(frames.exitCode, 0) << frames.err;
  for (int i = 0; i < 4; ++i) {
    PngPicture picture;
    ASSERT_TRUE(ReadPng(InDirectory("out/frame_000" + std::to_string(i + 1) + ".png"), picture));
    EXPECT_EQ(FrameNumberOf(picture), i * fx::kMovieAac.frames / 4);
  }
  TesselRun sheet = Run({"sheet", fx::Path(fx::kMovieAac.name), "-o", "sheet.png", "--columns", "3", "--count", "6"});
  ASSERT_EQ(sheet.exitCode, 0) << sheet.err;
  PngPicture picture;
  ASSERT_TRUE(ReadPng(InDirectory("sheet.png"), picture));
  EXPECT_EQ(picture.width, 8 + 3 * (240 + 8));
  EXPECT_EQ(picture.height, 8 + 2 * (180 + 20 + 8));
}

TEST_F(ClipCommandsTest, AudioWritesTheSoundWithTheStreamsNumbers) {
  TesselRun run = Run({"audio", fx::Path(fx::kMovieAac.name), "-o", "sound.wav"});
  ASSERT_EQ(run.exitCode, 0) << run.err;
  std::ifstream in(InDirectory("sound.wav"), std::ios::binary);
  std::string bytes(std::istreambuf_iterator<char>(in), {});
  ASSERT_GT(bytes.size(), 44u);
  EXPECT_EQ(bytes.substr(0, 4), "RIFF");
  EXPECT_EQ(Little(bytes, 20, 2), 1u) << "PCM";
  EXPECT_EQ(Little(bytes, 22, 2), 2u);
  EXPECT_EQ(Little(bytes, 24, 4), 48000u);
  EXPECT_EQ(Little(bytes, 34, 2), 16u);
  double seconds = Little(bytes, 40, 4) / (48000.0 * 4);
  EXPECT_NEAR(seconds, 2.0, 0.1);

  TesselRun floats = Run({"audio", fx::Path(fx::kWav32), "-o", "float.wav"});
  ASSERT_EQ(floats.exitCode, 0) << floats.err;
  std::ifstream floatIn(InDirectory("float.wav"), std::ios::binary);
  std::string floatBytes(std::istreambuf_iterator<char>(floatIn), {});
  EXPECT_EQ(Little(floatBytes, 20, 2), 3u) << "32-bit sound comes as float";
  EXPECT_EQ(Little(floatBytes, 34, 2), 32u);
}

TEST_F(ClipCommandsTest, FailuresOnRealFilesHaveTheirExitCodes) {
  EXPECT_EQ(Run({"frame", fx::Path(fx::kMovieAac.name), "--at", "5", "-o", "late.png"}).exitCode, 4);
  EXPECT_EQ(Run({"probe", fx::Path(fx::kText)}).exitCode, 3);
  EXPECT_EQ(Run({"probe", fx::Path("no_such_clip.mp4")}).exitCode, 2);
  EXPECT_EQ(Run({"frame", fx::Path(fx::kMovieAac.name), "--at", "0", "--stream", "1", "-o", "x.png"}).exitCode, 1);
}

TEST_F(ClipCommandsTest, TheDecodersComplaintsAboutADamagedClipComeOnlyWithLog) {
  const std::vector<std::string> frames = {"frames", fx::Path(fx::kDamaged), "--count", "5", "-o", InDirectory("out")};
  TesselRun quiet = Run(frames);
  ASSERT_EQ(quiet.exitCode, 0) << quiet.err;
  EXPECT_EQ(quiet.err, "");
  std::vector<std::string> logged = frames;
  logged.insert(logged.begin(), "--log");
  TesselRun loud = Run(logged);
  ASSERT_EQ(loud.exitCode, 0) << loud.err;
  EXPECT_NE(loud.err.find("\n["), std::string::npos) << "a codec line starts with its context in brackets";
}

TEST_F(ClipCommandsTest, DemoCountsWhatTheModuleDeclaresAndJsonListsWhatStayedUnresolved) {
  TesselRun text = Run({"demo"});
  ASSERT_EQ(text.exitCode, 0) << text.err;
  EXPECT_NE(text.out.find("declares 166 interfaces ("), std::string::npos) << text.out;
  EXPECT_NE(text.out.find("193 resource ids (193 resolved)"), std::string::npos) << text.out;
  TesselRun json = Run({"demo", "--json"});
  ASSERT_EQ(json.exitCode, 0) << json.err;
  EXPECT_NE(json.out.find("\"module\":\"net.vorna.tessel_reel\""), std::string::npos) << json.out;
  EXPECT_NE(json.out.find("\"vorna.Misc#1\""), std::string::npos);
  EXPECT_NE(json.out.find("\"vorna.WriteArchiveInterface#1\""), std::string::npos);
  EXPECT_EQ(json.out.find("\"vorna.System#1\""), std::string::npos) << "the host serves System";
  EXPECT_EQ(json.out.find("\"vorna.MediaConverterBaseClass\""), std::string::npos) << "the host publishes it";
}

}  // namespace
}  // namespace tessel::testing
