// tessel convert, describe and formats as processes, on the host's test module, whose
// recording saver writes down what the export gave it, and on generated clips read by
// the media module.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>

#include "fixtures.h"
#include "tessel_process.h"
#include "test_module/recording_format.h"

namespace tessel::testing {
namespace {

using nlohmann::json;
using testmodule::Recording;
namespace fx = tessel::fixtures;

class ConvertCommandsTest : public ::testing::Test {
 protected:
  void SetUp() override {
    _directory = MakeTempDirectory();
    ASSERT_FALSE(_directory.empty());
  }
  void TearDown() override { std::filesystem::remove_all(_directory); }

  static std::vector<std::string> With(std::vector<std::string> modules, const std::vector<std::string>& arguments) {
    modules.insert(modules.end(), arguments.begin(), arguments.end());
    return modules;
  }
  TesselRun Run(const std::vector<std::string>& arguments) { return RunTessel(With(PatternModule(), arguments), _directory); }
  TesselRun RunOnClips(const std::vector<std::string>& arguments) {
    return RunTessel(With(MediaAndTestModules(), arguments), _directory);
  }
  std::string InDirectory(const std::string& name) const { return _directory + "/" + name; }

  Recording ReadOutput(const std::string& name = "out.rec") const {
    Recording recording;
    EXPECT_TRUE(testmodule::ReadRecording(InDirectory(name), recording)) << name;
    return recording;
  }

  // Files of the directory other than the captured output, by name.
  std::vector<std::string> Files() const { return FilesWritten(_directory); }

  std::string _directory;
};

TEST_F(ConvertCommandsTest, JsonSummarySaysWhatWasWritten) {
  TesselRun run = Run({"convert", "memory://pattern-6x4.clip", "out.rec", "--fps", "10", "--json"});
  ASSERT_EQ(run.exitCode, 0) << run.err;
  json summary = json::parse(run.out);
  EXPECT_EQ(summary["output"], "out.rec");
  EXPECT_EQ(summary["saver"], "rec");
  EXPECT_EQ(summary["codec"], "BGRX") << "the saver's default";
  EXPECT_TRUE(summary["compressor"].is_null()) << "no compressor was chosen";
  EXPECT_EQ(summary["frames"], 10);
  EXPECT_DOUBLE_EQ(summary["seconds"].get<double>(), 1.0);
  EXPECT_GE(summary["elapsed"].get<double>(), 0.0);
  EXPECT_EQ(summary["bytes"].get<int64_t>(), int64_t(std::filesystem::file_size(InDirectory("out.rec"))));
  Recording recording = ReadOutput();
  EXPECT_EQ(recording.header["width"], "6");
  EXPECT_EQ(recording.frames.size(), 10u);
  EXPECT_EQ(Files(), std::vector<std::string>{"out.rec"}) << "the temporary file became OUT";
}

// Every named option lands in the setting it stands for, typed as the saver describes it;
// --bitrate is bits per second and the setting datarate bytes per second.
TEST_F(ConvertCommandsTest, OptionsBecomeTheSaversSettings) {
  TesselRun run = Run({"convert", "memory://pattern-6x4.clip", "out.rec", "--fps", "10", "--codec", "YUY2",
                       "--bitrate", "8M", "--keyframes", "60", "--audio-codec", "mp3", "--audio-rate", "44100",
                       "--audio-kbps", "128", "--setting", "delay=1", "--no-srgb"});
  ASSERT_EQ(run.exitCode, 0) << run.err;
  Recording recording = ReadOutput();
  const std::pair<const char*, const char*> kExpected[] = {{"codec", "YUY2"},        {"datarate", "1000000"},
                                                           {"keyframes", "60"},      {"audiocodec", "mp3"},
                                                           {"audiorate", "44100"},   {"audiokbps", "128"}};
  for (const auto& [key, value] : kExpected) EXPECT_EQ(recording.header[key], value) << key;
  ASSERT_FALSE(recording.frames.empty());
  EXPECT_EQ(recording.frames[0].rows.size(), 6u * 4 * 2) << "YUY2 has two bytes a pixel";
  EXPECT_EQ(recording.frames[0].askedProfile, recording.frames[0].profile) << "--no-srgb: the frame's own profile";
}

TEST_F(ConvertCommandsTest, BadUsageWritesNothing) {
  const std::vector<std::string> kCases[] = {
      {"convert", "memory://pattern.clip", "out.rec", "--setting", "colour=red"},
      {"convert", "memory://pattern.clip", "out.rec", "--setting", "keyframes=many"},
      {"convert", "memory://pattern.clip", "out.rec", "--setting", "keyframes"},
      {"convert", "memory://pattern.clip", "out.rec", "--bitrate", "fast"},
      {"convert", "memory://pattern.clip", "out.xyz"},
      {"convert", "memory://pattern.clip", "out.rec", "--saver", "mov"},
      {"convert", "memory://pattern.clip", "out.rec", "--from", "2", "--to", "1"},
      {"convert", "memory://pattern.clip", "out.rec", "--fps", "0"},
      {"convert", "memory://pattern.clip"},
      {"describe", "mov"},
  };
  for (const auto& arguments : kCases) {
    TesselRun run = Run(arguments);
    EXPECT_EQ(run.exitCode, 64) << arguments.back() << ": " << run.err;
    EXPECT_NE(run.err.find("Run \"tessel help\""), std::string::npos) << run.err;
  }
  EXPECT_TRUE(Files().empty());
}

// A refusal by the saver (6), an input that cannot be read (2, 3) or holds nothing at the
// start (4): each with its exit code and the message as it stands; an OUT that was there
// is left as it was, and no temporary file stays behind.
TEST_F(ConvertCommandsTest, FailuresHaveTheirExitCodesAndLeaveOutAlone) {
  const struct {
    std::vector<std::string> arguments;
    int exitCode;
    const char* message;
  } kCases[] = {
      {{"memory://pattern.clip", "out.rec"}, 6, "out.rec: MEDIAFORMAT::VIDEO::FPS is missing."},
      {{"memory://pattern.clip", "out.rec", "--fps", "5", "--codec", "WMV3"},
       6,
       "out.rec: Unsupported Codec for this container format: WMV3."},
      {{"memory://pattern-4097x2.clip", "out.rec", "--fps", "5"}, 6, "out.rec: Maximum resolution exceeded."},
      {{"memory://pattern-0x2.clip", "out.rec", "--fps", "5"}, 6, "out.rec: resolution must not be 0."},
      {{"memory://pattern.clip", "out.rec", "--fps", "5", "--from", "3"}, 4, "End of stream"},
      {{"memory://pattern.clip", "out.rec", "--fps", "5", "--stream", "1"}, 1, "The input has no video stream 1."},
      {{"memory://holiday.mov", "out.rec"}, 3, "No reader for memory://holiday.mov"},
      {{"missing.mp4", "out.rec"}, 2, "missing.mp4: no such file"},
  };
  for (const auto& c : kCases) {
    std::ofstream(InDirectory("out.rec")) << "precious";
    std::vector<std::string> arguments = {"convert"};
    arguments.insert(arguments.end(), c.arguments.begin(), c.arguments.end());
    TesselRun run = Run(arguments);
    EXPECT_EQ(run.exitCode, c.exitCode) << c.message << ": " << run.err;
    EXPECT_NE(run.err.find(c.message), std::string::npos) << run.err;
    std::ifstream kept(InDirectory("out.rec"));
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(kept), {}), "precious") << c.message;
    EXPECT_EQ(Files(), std::vector<std::string>{"out.rec"}) << c.message;
  }
}

bool Writing(const std::string& directory) {
  for (const auto& entry : std::filesystem::directory_iterator(directory))
    if (entry.path().filename().string().find(".tessel-") != std::string::npos) return true;
  return false;
}

TEST_F(ConvertCommandsTest, CtrlCStopsBetweenFramesAndWritesNoOut) {
  TesselRun run = RunTesselAndInterrupt(
      With(PatternModule(), {"convert", "memory://pattern.clip", "out.rec", "--fps", "10", "--setting", "delay=200"}),
      _directory, &Writing);
  EXPECT_EQ(run.exitCode, 130) << run.err;
  EXPECT_NE(run.err.find("cancelled"), std::string::npos) << run.err;
  EXPECT_TRUE(Files().empty()) << "neither OUT nor the temporary file";
}

TEST_F(ConvertCommandsTest, ATerminalSeesTheProgress) {
  TesselRun run = RunTesselOnTerminal(
      With(PatternModule(), {"convert", "memory://pattern.clip", "out.rec", "--fps", "10", "--to", "0.5"}), _directory);
  ASSERT_EQ(run.exitCode, 0) << run.out;
  EXPECT_NE(run.out.find("\rframe 5/5  0.50 s  "), std::string::npos) << run.out;
  EXPECT_NE(run.out.find(" left"), std::string::npos) << run.out;
  EXPECT_NE(run.out.find("out.rec: 5 frames, 0.5 s of movie"), std::string::npos) << run.out;
}

TEST_F(ConvertCommandsTest, DescribeShowsTheSettingsAndCapabilitiesOfASaver) {
  TesselRun run = Run({"describe", "rec", "--json"});
  ASSERT_EQ(run.exitCode, 0) << run.err;
  json description = json::parse(run.out);
  EXPECT_EQ(description["suffixes"], json::array({"rec"}));
  EXPECT_EQ(description["capabilities"]["maximalimageresolution"], 4096);
  EXPECT_EQ(description["capabilities"]["supports_video"], true);
  const json& settings = description["settings"];
  ASSERT_EQ(settings.size(), 8u);
  EXPECT_EQ(settings[0], json::parse(R"({"key":"codec","type":"Id","default":"BGRX","minimum":null,
                                          "maximum":null,"choices":["BGRX","YUY2","BGR"]})"));
  EXPECT_EQ(settings[1]["type"], "BytesValue");
  EXPECT_EQ(settings[1]["minimum"], 0);
  EXPECT_EQ(settings[3]["default"], false);

  TesselRun text = Run({"describe", "rec", "--audio-codec", "mp3"});
  ASSERT_EQ(text.exitCode, 0) << text.err;
  EXPECT_NE(text.out.find("  codec (Id), default BGRX, choices: BGRX YUY2 BGR\n"), std::string::npos) << text.out;
}

TEST_F(ConvertCommandsTest, FormatsListTheSaversWithTheirSuffixes) {
  TesselRun run = Run({"formats", "--json"});
  ASSERT_EQ(run.exitCode, 0) << run.err;
  json formats = json::parse(run.out);
  EXPECT_EQ(formats["savers"], json::parse(R"([{"id":"rec","suffixes":["rec"]}])"));
  EXPECT_EQ(formats["handlers"], json::array({"test.pattern"}));
  TesselRun text = Run({"formats"});
  EXPECT_NE(text.out.find("savers (vorna.ImageSavers):\n  rec "), std::string::npos) << text.out;
}

// Clips read by the media module reach the saver as `tessel frame` gets them: turned
// upright, anamorphic with their pixel aspect or with square pixels, with all their sound.
TEST_F(ConvertCommandsTest, ClipsReachTheSaverUprightWithTheirAspectAndSound) {
  const struct {
    const fx::Clip& clip;
    std::vector<std::string> options;
    const char* width;
    const char* height;
    double aspect;
  } kCases[] = {
      {fx::kRotated90, {}, "160", "240", 1.0},
      {fx::kAnamorphicPal, {}, "720", "576", 16.0 / 15.0},
      {fx::kAnamorphicPal, {"--square"}, "768", "576", 1.0},
  };
  for (const auto& c : kCases) {
    std::vector<std::string> arguments = {"convert", fx::Path(c.clip.name), "out.rec", "--to", "0.1"};
    arguments.insert(arguments.end(), c.options.begin(), c.options.end());
    TesselRun run = RunOnClips(arguments);
    ASSERT_EQ(run.exitCode, 0) << c.clip.name << ": " << run.err;
    Recording recording = ReadOutput();
    EXPECT_EQ(recording.header["width"], c.width) << c.clip.name;
    EXPECT_EQ(recording.header["height"], c.height) << c.clip.name;
    EXPECT_NEAR(std::stod(recording.header["aspect"]), c.aspect, 1e-4) << c.clip.name;
    EXPECT_EQ(recording.frames.size(), 3u) << "0.1 s at 25 fps: frames at 0, 0.04 and 0.08 s";
  }
  TesselRun sound = RunOnClips({"convert", fx::Path(fx::kMovieAac.name), "out.rec", "--to", "1"});
  ASSERT_EQ(sound.exitCode, 0) << sound.err;
  Recording recording = ReadOutput();
  EXPECT_EQ(recording.header["soundchannels"], "2");
  EXPECT_EQ(recording.sound.size(), 48000u * 4) << "the sound of the export's second";
  TesselRun opus = RunOnClips({"convert", fx::Path(fx::kMovieAac.name), "out.rec", "--audio-codec", "opus"});
  EXPECT_EQ(opus.exitCode, 6);
  EXPECT_NE(opus.err.find("out.rec: Invalid audio codec: opus"), std::string::npos) << opus.err;
}

}  // namespace
}  // namespace tessel::testing
