// AVI on the command line, as processes on the media module: the platform's compressors,
// --compressor, the settings file that keeps a choice for the next export, and the
// compressor chooser on a scripted terminal.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>

#include "compressor_list.h"
#include "fixtures.h"
#include "four_character_code.h"
#include "reference_decoder.h"
#include "tessel_process.h"

namespace tessel::testing {
namespace {

using nlohmann::json;
namespace fx = tessel::fixtures;

constexpr const char* kArrayType = "vorna.ParametricTypes:Array<vorna.Char>";
constexpr const char* kFirstQuestion = "Compressor number (Enter or q cancels): ";

// FFmpeg's name of the video codec of a written file.
std::string VideoCodecOf(const std::string& path) { return fx::ReferenceCodecName(path, AVMEDIA_TYPE_VIDEO); }

int32_t Code(const char* text) {
  uint32_t code = 0;
  EXPECT_TRUE(cli::ParseFourCharacterCode(text, code)) << text;
  return int32_t(code);
}

// What the user types to pick a compressor: its number in the chooser's list.
std::string NumberOf(const char* code) {
  std::vector<TesselCompressor> compressors = cli::PlatformCompressors();
  for (size_t i = 0; i < compressors.size(); ++i)
    if (cli::FourCharacterText(compressors[i].fccHandler) == code) return std::to_string(i + 1);
  ADD_FAILURE() << "the platform has no " << code;
  return "";
}

json Entry(const char* type, json value) { return {{"type", type}, {"value", std::move(value)}}; }

class AviCommandsTest : public ::testing::Test {
 protected:
  void SetUp() override {
    _directory = MakeTempDirectory();
    ASSERT_FALSE(_directory.empty());
  }
  void TearDown() override { std::filesystem::remove_all(_directory); }

  TesselRun Run(const std::vector<std::string>& arguments) { return RunTessel(arguments, _directory); }
  // tessel convert of the clip's first 0.2 s into out, with options.
  std::vector<std::string> Convert(const std::string& out, std::vector<std::string> options) const {
    std::vector<std::string> arguments = {"convert", fx::Path(fx::kMovieAac.name), out, "--to", "0.2"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return arguments;
  }
  std::string InDirectory(const std::string& name) const { return _directory + "/" + name; }
  std::string Text(const std::string& name) const {
    std::ifstream in(InDirectory(name), std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
  }
  json Settings() const { return json::parse(Text("s.json")); }
  void WriteSettings(const std::string& text) const { std::ofstream(InDirectory("s.json")) << text; }
  std::vector<std::string> Files() const { return FilesWritten(_directory); }

  std::string _directory;
};

TEST_F(AviCommandsTest, CompressorsListsWhatThePlatformOffers) {
  TesselRun run = Run({"compressors", "--json"});
  ASSERT_EQ(run.exitCode, 0) << run.err;
  const json listed = json::parse(run.out)["compressors"];
  std::vector<TesselCompressor> compressors = cli::PlatformCompressors();
  ASSERT_EQ(listed.size(), compressors.size());
  for (size_t i = 0; i < compressors.size(); ++i) {
    const json& entry = listed[i];
    EXPECT_EQ(entry["code"], cli::FourCharacterText(compressors[i].fccHandler));
    EXPECT_EQ(entry["name"], compressors[i].name);
    EXPECT_EQ(entry["quality"], bool(compressors[i].flags & VIDCF_QUALITY)) << entry;
    EXPECT_EQ(entry["keyframes"], bool(compressors[i].flags & VIDCF_TEMPORAL)) << entry;
    EXPECT_EQ(entry["datarate"], bool(compressors[i].flags & VIDCF_CRUNCH)) << entry;
  }
  TesselRun text = Run({"compressors"});
  EXPECT_NE(text.out.find("\n  DIB   Uncompressed RGB                 -\n"), std::string::npos) << text.out;
  EXPECT_NE(text.out.find("\n  mjpg  Motion JPEG                      quality, data rate\n"), std::string::npos);
}

TEST_F(AviCommandsTest, DescribeAviShowsItsSettingsAndWhatTheChooserKeeps) {
  TesselRun run = Run({"describe", "avi", "--json"});
  ASSERT_EQ(run.exitCode, 0) << run.err;
  json description = json::parse(run.out);
  EXPECT_EQ(description["capabilities"]["supports_systemoptions"], true);
  EXPECT_EQ(description["settings"][0], json::parse(R"({"key":"quality","type":"Float64","default":1,"minimum":0,
                                                         "maximum":1,"choices":[]})"));
  EXPECT_EQ(description["systemsettings"], json::parse(R"([{"key":"avitype","type":"Int32"},
      {"key":"avihandler","type":"Int32"},{"key":"customdata","type":"vorna.ParametricTypes:Array<vorna.Char>"}])"));
  TesselRun mp4 = Run({"describe", "mp4", "--json"});
  EXPECT_EQ(json::parse(mp4.out)["systemsettings"], json::array()) << "a saver without system options";
}

// The round trip of a stored choice: the options write the file, the file alone makes
// the next export the same, and an option given later wins over the file for its key.
TEST_F(AviCommandsTest, ASettingsFileKeepsTheCompressorForTheNextExport) {
  TesselRun first = Run(Convert("a.avi", {"--compressor", "MJPG", "--quality", "0.75", "--bitrate", "800k",
                                          "--settings", "s.json", "--json"}));
  ASSERT_EQ(first.exitCode, 0) << first.err;
  EXPECT_EQ(json::parse(first.out)["compressor"], "mjpg") << "the platform's spelling of the code";
  EXPECT_EQ(VideoCodecOf(InDirectory("a.avi")), "mjpeg");
  const json stored = {{"quality", Entry("Float64", 0.75)},
                       {"datarate", Entry("BytesValue", 100000)},
                       {"avitype", Entry("Int32", Code("vidc"))},
                       {"avihandler", Entry("Int32", Code("mjpg"))}};
  EXPECT_EQ(Settings(), stored);
  std::string file = Text("s.json");

  TesselRun again = Run(Convert("b.avi", {"--settings", "s.json"}));
  ASSERT_EQ(again.exitCode, 0) << again.err;
  EXPECT_NE(again.out.find("(saver avi, compressor mjpg)"), std::string::npos) << again.out;
  EXPECT_EQ(VideoCodecOf(InDirectory("b.avi")), "mjpeg");
  EXPECT_EQ(Text("s.json"), file);

  TesselRun other = Run(Convert("c.avi", {"--settings", "s.json", "--compressor", "xvid"}));
  ASSERT_EQ(other.exitCode, 0) << other.err;
  EXPECT_EQ(VideoCodecOf(InDirectory("c.avi")), "mpeg4");
  json changed = stored;
  changed["avihandler"]["value"] = Code("xvid");
  EXPECT_EQ(Settings(), changed);
}

TEST_F(AviCommandsTest, TheChooserOnATerminalStoresTheChoiceAndOpensOnItNextTime) {
  std::string xvid = NumberOf("xvid");
  TesselRun first = RunTesselOnTerminal(Convert("a.avi", {"--choose", "--settings", "s.json"}), _directory,
                                        {{kFirstQuestion, xvid},
                                         {"Quality, 0 to 1 [1]: ", "0.5"},
                                         {"Key frame every N frames (0: the compressor's own) [10]: ", "12"},
                                         {"Data rate in kilobytes per second (0: no limit) [0]: ", "300"}});
  ASSERT_EQ(first.exitCode, 0) << first.out;
  EXPECT_NE(first.out.find(" *  " + NumberOf("iyuv") + "  iyuv "), std::string::npos)
      << "without a stored choice raw I420 is pre-selected\n" << first.out;
  EXPECT_EQ(VideoCodecOf(InDirectory("a.avi")), "mpeg4");
  const json chosen = {{"avitype", Entry("Int32", Code("vidc"))}, {"avihandler", Entry("Int32", Code("xvid"))},
                       {"quality", Entry("Float64", 0.5)},       {"keyframes", Entry("Int32", 12)},
                       {"datarate", Entry("BytesValue", 300000)}, {"customdata", Entry(kArrayType, "")}};
  EXPECT_EQ(Settings(), chosen);

  TesselRun again = RunTesselOnTerminal(Convert("b.avi", {"--choose", "--settings", "s.json"}), _directory,
                                        {{kFirstQuestion, xvid}, {"[0.5]: ", ""}, {"[12]: ", ""}, {"[300]: ", ""}});
  ASSERT_EQ(again.exitCode, 0) << again.out;
  EXPECT_NE(again.out.find(" *  " + xvid + "  xvid "), std::string::npos) << again.out;
  EXPECT_EQ(Settings(), chosen);
}

// The compressor's own state goes into the file as base64 and back to the chooser,
// which keeps it for the same compressor and drops it for another; --compressor does
// the same.
TEST_F(AviCommandsTest, TheCompressorsStateTravelsThroughTheFileAsBase64) {
  WriteSettings(json{{"avitype", Entry("Int32", Code("vidc"))},
                     {"avihandler", Entry("Int32", Code("mjpg"))},
                     {"customdata", Entry(kArrayType, "AP94")}}
                    .dump());
  TesselRun same = RunTesselOnTerminal(Convert("a.avi", {"--choose", "--settings", "s.json"}), _directory,
                                       {{kFirstQuestion, NumberOf("mjpg")}, {"[1]: ", ""}, {"[0]: ", ""}});
  ASSERT_EQ(same.exitCode, 0) << same.out;
  EXPECT_EQ(Settings()["customdata"], Entry(kArrayType, "AP94"));
  TesselRun sameByOption = Run(Convert("a.avi", {"--settings", "s.json", "--compressor", "MJPG"}));
  ASSERT_EQ(sameByOption.exitCode, 0) << sameByOption.err;
  EXPECT_EQ(Settings()["customdata"], Entry(kArrayType, "AP94")) << "the same compressor, its code in capitals";
  TesselRun otherByOption = Run(Convert("a.avi", {"--settings", "s.json", "--compressor", "xvid"}));
  ASSERT_EQ(otherByOption.exitCode, 0) << otherByOption.err;
  EXPECT_FALSE(Settings().contains("customdata")) << Settings();
  WriteSettings(json{{"avitype", Entry("Int32", Code("vidc"))},
                     {"avihandler", Entry("Int32", Code("mjpg"))},
                     {"customdata", Entry(kArrayType, "AP94")}}
                    .dump());
  TesselRun other = RunTesselOnTerminal(Convert("a.avi", {"--choose", "--settings", "s.json"}), _directory,
                                        {{kFirstQuestion, NumberOf("hfyu")}});
  ASSERT_EQ(other.exitCode, 0) << other.out;
  EXPECT_EQ(Settings()["customdata"], Entry(kArrayType, ""));
  EXPECT_EQ(VideoCodecOf(InDirectory("a.avi")), "huffyuv");
}

TEST_F(AviCommandsTest, ACancelledChoiceWritesNothingAndSaysSo) {
  const std::string kept = R"({"quality":{"type":"Float64","value":0.5}})";
  for (const char* typed : {"q", ""}) {
    WriteSettings(kept);
    TesselRun run = RunTesselOnTerminal(Convert("out.avi", {"--choose", "--settings", "s.json", "--quality", "0.25"}),
                                        _directory, {{kFirstQuestion, typed}});
    EXPECT_EQ(run.exitCode, 7) << run.out;
    EXPECT_NE(run.out.find("tessel: out.avi: the compressor choice was cancelled; nothing was written, and s.json "
                           "is as it was"),
              std::string::npos)
        << run.out;
    EXPECT_EQ(Text("s.json"), kept);
    EXPECT_EQ(Files(), std::vector<std::string>{"s.json"});
  }
}

TEST_F(AviCommandsTest, BadUsageWritesNothingAndLeavesTheSettingsFile) {
  const std::string kValid = R"({"quality":{"type":"Float64","value":0.5}})";
  const struct {
    std::vector<std::string> options;
    std::string file;  // the settings file's text
    const char* message;
  } kCases[] = {
      {{"--choose"}, kValid, "--choose asks on a terminal, and tessel runs without one"},
      {{"--compressor", "zzzz"}, kValid, "--compressor: no compressor has the code \"zzzz\""},
      {{"--compressor", "mjpeg"}, kValid, "--compressor: no compressor has the code \"mjpeg\""},
      {{"--quality", "1.5"}, kValid, "--quality expects a number from 0 to 1, got \"1.5\""},
      {{"--setting", "avitype=1"}, kValid, "the saver avi has no setting \"avitype\""},
      {{}, "quality = 0.5", "s.json: not a settings file: "},
      {{}, "[1]", "s.json: not a settings file: expected one JSON object"},
      {{}, R"({"colour":{"type":"String","value":"red"}})", "s.json: the saver avi has no setting \"colour\""},
      {{}, R"({"quality":0.5})", "s.json: setting quality: expected {\"type\": \"Float64\", \"value\": ...}"},
      {{}, R"({"quality":{"type":"Int32","value":1}})", "s.json: setting quality: is of type Float64, not Int32"},
      {{}, R"({"quality":{"type":"Float64","value":"high"}})", "s.json: setting quality: \"high\" is no Float64 value"},
      {{}, R"({"keyframes":{"type":"Int32","value":1.5}})", "s.json: setting keyframes: \"1.5\" is no Int32 value"},
      {{}, R"({"avitype":{"type":"Int32","value":4294967296}})", "setting avitype: \"4294967296\" is no Int32 value"},
      {{}, R"({"disable srgb conversion":{"type":"Bool","value":1}})", "setting disable srgb conversion: 1 is no Bool"},
      {{}, R"({"customdata":{"type":"vorna.ParametricTypes:Array<vorna.Char>","value":"AP9"}})",
       "s.json: setting customdata: expected the bytes as base64 text"},
  };
  for (const auto& c : kCases) {
    WriteSettings(c.file);
    std::vector<std::string> options = c.options;
    options.insert(options.end(), {"--settings", "s.json"});
    TesselRun run = Run(Convert("out.avi", options));
    EXPECT_EQ(run.exitCode, 64) << c.message << ": " << run.err;
    EXPECT_NE(run.err.find(c.message), std::string::npos) << run.err;
    EXPECT_EQ(Text("s.json"), c.file) << c.message;
    EXPECT_EQ(Files(), std::vector<std::string>{"s.json"}) << c.message;
  }
  for (const char* option : {"--compressor", "--choose"}) {
    std::vector<std::string> arguments = Convert("out.mp4", {option});
    if (std::string(option) == "--compressor") arguments.push_back("mjpg");
    TesselRun run = Run(arguments);
    EXPECT_EQ(run.exitCode, 64) << option;
    EXPECT_NE(run.err.find("the saver mp4 has no compressor to choose"), std::string::npos) << run.err;
  }
}

// The demo's movies: MP4 and WMV with their savers' default codecs, AVI as Motion JPEG.
TEST_F(AviCommandsTest, TheDemoWritesItsClipAsMp4WmvAndMotionJpeg) {
  TesselRun run = Run({"demo", fx::Path(fx::kMovieAac.name), "-o", _directory});
  ASSERT_EQ(run.exitCode, 0) << run.err;
  EXPECT_NE(run.out.find("$ tessel convert " + fx::Path(fx::kMovieAac.name) + " " + InDirectory("movie.avi") +
                         " --compressor mjpg\n"),
            std::string::npos)
      << run.out;
  EXPECT_EQ(VideoCodecOf(InDirectory("movie.mp4")), "h264");
  EXPECT_EQ(VideoCodecOf(InDirectory("movie.wmv")), "wmv3");
  EXPECT_EQ(VideoCodecOf(InDirectory("movie.avi")), "mjpeg");
  for (const char* sheet : {"sheet_mp4.png", "sheet_wmv.png", "sheet_avi.png"}) {
    EXPECT_TRUE(std::filesystem::exists(InDirectory(sheet))) << sheet;
  }
}

}  // namespace
}  // namespace tessel::testing
