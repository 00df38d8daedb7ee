// The command line's writers in-process: JSON, WAV, PNG and the contact sheet.
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>

#include "contact_sheet.h"
#include "json_writer.h"
#include "png_file.h"
#include "png_writer.h"
#include "tessel_process.h"
#include "wav_writer.h"

namespace tessel::testing {
namespace {

using cli::Rgba;
using cli::RgbaImage;

uint32_t Little(const std::string& bytes, size_t at, int size) {
  uint32_t value = 0;
  for (int i = size - 1; i >= 0; --i) value = value << 8 | uint8_t(bytes[at + size_t(i)]);
  return value;
}

std::string ReadAll(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), {});
}

class OutputWritersTest : public ::testing::Test {
 protected:
  void SetUp() override { _directory = MakeTempDirectory(); }
  void TearDown() override { std::filesystem::remove_all(_directory); }
  std::string _directory;
};

TEST(JsonWriterTest, NestsSeparatesEscapesAndNullsWhatJsonCannotHold) {
  cli::JsonWriter writer;
  writer.BeginObject();
  writer.Field("text", "quote \" backslash \\ tab \t bell \x07");
  writer.Key("list");
  writer.BeginArray();
  writer.Integer(-3);
  writer.Number(0.1);
  writer.Number(-1.7976931348623157e308);
  writer.Number(HUGE_VAL);
  writer.BeginObject();
  writer.EndObject();
  writer.EndArray();
  writer.FieldOrNull("missing", std::optional<int64_t>());
  writer.EndObject();
  nlohmann::json parsed = nlohmann::json::parse(writer.Text());
  EXPECT_EQ(parsed["text"], "quote \" backslash \\ tab \t bell \x07");
  EXPECT_EQ(parsed["list"], nlohmann::json::parse("[-3, 0.1, -1.7976931348623157e308, null, {}]"));
  EXPECT_TRUE(parsed["missing"].is_null());
  EXPECT_NE(writer.Text().find("0.1,"), std::string::npos) << "the short form when it reads back the same";
}

TEST_F(OutputWritersTest, WavHeaderCarriesTheLayoutAndFloatGetsItsOwnTag) {
  std::string path = _directory + "/float.wav";
  std::string error;
  std::vector<uint8_t> sound(8 * 3, 0x11);  // three stereo frames of 32-bit float
  ASSERT_TRUE(cli::WriteWav(path, {2, 32, 48000, true}, sound, error)) << error;
  std::string bytes = ReadAll(path);
  ASSERT_EQ(bytes.size(), 12u + 8u + 18u + 8u + 24u);
  EXPECT_EQ(bytes.substr(0, 4), "RIFF");
  EXPECT_EQ(Little(bytes, 4, 4), bytes.size() - 8);
  EXPECT_EQ(bytes.substr(8, 8), "WAVEfmt ");
  EXPECT_EQ(Little(bytes, 20, 2), 3u) << "WAVE_FORMAT_IEEE_FLOAT";
  EXPECT_EQ(Little(bytes, 22, 2), 2u);
  EXPECT_EQ(Little(bytes, 24, 4), 48000u);
  EXPECT_EQ(Little(bytes, 28, 4), 48000u * 8u);
  EXPECT_EQ(Little(bytes, 32, 2), 8u);
  EXPECT_EQ(Little(bytes, 34, 2), 32u);
  EXPECT_EQ(bytes.substr(38, 4), "data");
  EXPECT_EQ(Little(bytes, 42, 4), 24u);

  ASSERT_TRUE(cli::WriteWav(path, {1, 16, 44100, false}, {1, 2, 3}, error)) << error;
  bytes = ReadAll(path);
  EXPECT_EQ(Little(bytes, 20, 2), 1u) << "PCM";
  EXPECT_EQ(Little(bytes, 40, 4), 3u);
  EXPECT_EQ(bytes.size() % 2, 0u) << "an odd data chunk is padded";

  EXPECT_FALSE(cli::WriteWav(path, {2, 12, 48000, false}, sound, error));
  EXPECT_NE(error.find("12 bits"), std::string::npos) << error;
}

TEST_F(OutputWritersTest, PngIsRgbWhenOpaqueAndRgbaOtherwise) {
  RgbaImage image(3, 2, Rgba{10, 20, 30, 255});
  std::string path = _directory + "/p.png";
  std::string error;
  ASSERT_TRUE(cli::WritePng(path, image, error)) << error;
  PngPicture picture;
  ASSERT_TRUE(ReadPng(path, picture));
  EXPECT_EQ(picture.channels, 3);
  EXPECT_EQ(picture.At(2, 1)[2], 30);

  image.At(1, 1)[3] = 0;
  ASSERT_TRUE(cli::WritePng(path, image, error)) << error;
  ASSERT_TRUE(ReadPng(path, picture));
  EXPECT_EQ(picture.channels, 4);
  EXPECT_EQ(picture.At(1, 1)[3], 0);
  EXPECT_EQ(picture.At(0, 0)[3], 255);

  EXPECT_FALSE(cli::WritePng(_directory + "/no/such/dir.png", image, error));
  EXPECT_NE(error.find("No such file"), std::string::npos) << error;
}

TEST(ContactSheetTest, LaysCellsOutInRowsWithALabelUnderEach) {
  std::vector<cli::SheetCell> cells;
  for (int i = 0; i < 5; ++i) cells.push_back({RgbaImage(40, 20, Rgba{uint8_t(i * 50), 0, 0, 255}), "0:0" + std::to_string(i)});
  RgbaImage sheet = cli::ComposeSheet(cells, 2, 80);
  // Two columns and three rows of 80x40 cells, each with a label band, in margins of 8.
  int64_t cellHeight = 40 + 7 * 2 + 6;
  EXPECT_EQ(sheet.width, 8 + 2 * (80 + 8));
  EXPECT_EQ(sheet.height, 8 + 3 * (cellHeight + 8));
  EXPECT_EQ(sheet.At(8 + 88 + 40, 8 + 20)[0], 50) << "the second cell holds the second picture, scaled";
  EXPECT_EQ(sheet.At(8 + 88 + 40, 8 + cellHeight + 8 + 20)[0], 150) << "the fourth starts the second row";
  int ink = 0;
  for (int64_t y = 8 + 40; y < 8 + cellHeight; ++y)
    for (int64_t x = 8; x < 8 + 80; ++x) ink += sheet.At(x, y)[1] > 200;
  EXPECT_GT(ink, 20) << "the label is drawn under the picture";
}

TEST(ContactSheetTest, ClockLabelsRoundToHundredths) {
  EXPECT_EQ(cli::ClockLabel(0), "0:00.00");
  EXPECT_EQ(cli::ClockLabel(65.204), "1:05.20");
  EXPECT_EQ(cli::ClockLabel(59.999), "1:00.00");
}

}  // namespace
}  // namespace tessel::testing
