// The pieces of tessel convert that need no host, in-process: the progress text, whole
// numbers with k and M, base64 and four-character codes, and the temporary output file.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "base64.h"
#include "mmsystem.h"
#include "four_character_code.h"
#include "output_file.h"
#include "progress_line.h"
#include "setting_values.h"
#include "tessel_process.h"

namespace tessel::testing {
namespace {

TEST(ProgressTextTest, TellsSpeedAndTimeLeftWhenTheEndIsKnown) {
  EXPECT_EQ(cli::ProgressText({30, 120, 1.2}, 0.6), "frame 30/120  1.20 s  2.00x  2 s left");
  EXPECT_EQ(cli::ProgressText({30, 0, 1.2}, 0.6), "frame 30  1.20 s  2.00x");
  EXPECT_EQ(cli::ProgressText({0, 120, 0}, 0), "frame 0/120  0.00 s");
}

TEST(ParseScaledTest, TakesThousandsAndMillions) {
  const struct {
    const char* text;
    bool ok;
    int64_t value;
  } kCases[] = {{"8000000", true, 8000000}, {"8M", true, 8000000}, {"192k", true, 192000}, {"0", true, 0},
                {"8m", false, 0},          {"1.5M", false, 0},     {"-3", false, 0},       {"", false, 0},
                {"M", false, 0},           {"99999999999999M", false, 0}};
  for (const auto& c : kCases) {
    int64_t value = 0;
    EXPECT_EQ(cli::ParseScaled(c.text, value), c.ok) << c.text;
    EXPECT_EQ(value, c.value) << c.text << ": a refused text leaves the value alone";
  }
}

TEST(Base64Test, EncodesEveryRemainderAndReadsItBack) {
  const std::pair<std::string, const char*> kCases[] = {
      {"", ""}, {"f", "Zg=="}, {"fo", "Zm8="}, {"foo", "Zm9v"}, {"foob", "Zm9vYg=="},
      {std::string("\0\xff\xfe", 3), "AP/+"}};
  for (const auto& [bytes, text] : kCases) {
    EXPECT_EQ(cli::Base64Encode(bytes), text);
    std::string decoded = "left over";
    EXPECT_TRUE(cli::Base64Decode(text, decoded)) << text;
    EXPECT_EQ(decoded, bytes) << text;
  }
  std::string every;
  for (int c = 0; c < 256; ++c) every += char(c);
  std::string back;
  ASSERT_TRUE(cli::Base64Decode(cli::Base64Encode(every), back));
  EXPECT_EQ(back, every);
}

TEST(Base64Test, RefusesWhatIsNotBase64AndLeavesTheBytes) {
  for (const char* text : {"Zg=", "Zg", "Z===", "====", "Zg==Zm8=", "Zm9v\n", "Zm 9", "Zh==", "Zm9=", "Zm-v"}) {
    std::string bytes = "kept";
    EXPECT_FALSE(cli::Base64Decode(text, bytes)) << text;
    EXPECT_EQ(bytes, "kept") << text;
  }
}

TEST(FourCharacterCodeTest, ShortCodesArePaddedWithBlanks) {
  const struct {
    const char* text;
    uint32_t code;
  } kCases[] = {{"mjpg", mmioFOURCC('m', 'j', 'p', 'g')}, {"DIB", mmioFOURCC('D', 'I', 'B', ' ')},
                {"x", mmioFOURCC('x', ' ', ' ', ' ')}};
  for (const auto& c : kCases) {
    uint32_t code = 0;
    EXPECT_TRUE(cli::ParseFourCharacterCode(c.text, code)) << c.text;
    EXPECT_EQ(code, c.code) << c.text;
    EXPECT_EQ(cli::FourCharacterText(c.code), c.text);
  }
  for (const char* refused : {"", "mjpeg", "mj\tg", "\xe9t\xe9"}) {
    uint32_t code = 7;
    EXPECT_FALSE(cli::ParseFourCharacterCode(refused, code)) << refused;
    EXPECT_EQ(code, 7u);
  }
  EXPECT_EQ(cli::FourCharacterText(0x00010203), "0x00010203") << "unprintable codes show in hexadecimal";
}

class OutputFileTest : public ::testing::Test {
 protected:
  void SetUp() override { _directory = MakeTempDirectory(); }
  void TearDown() override { std::filesystem::remove_all(_directory); }
  std::string _directory;
};

TEST_F(OutputFileTest, TheTemporaryFileKeepsTheSuffixAndBecomesOutOnlyWhenCommitted) {
  std::string out = _directory + "/movie.wmv";
  {
    cli::OutputFile file;
    cli::Failure failure;
    ASSERT_TRUE(file.Prepare(out, failure)) << failure.message;
    EXPECT_EQ(std::filesystem::path(file.TemporaryPath()).parent_path(), std::filesystem::path(_directory));
    EXPECT_EQ(std::filesystem::path(file.TemporaryPath()).extension(), ".wmv");
    std::ofstream(file.TemporaryPath()) << "half";
  }
  EXPECT_TRUE(std::filesystem::is_empty(_directory)) << "an uncommitted file is removed";
  cli::OutputFile file;
  cli::Failure failure;
  ASSERT_TRUE(file.Prepare(out, failure));
  std::ofstream(file.TemporaryPath()) << "whole";
  ASSERT_TRUE(file.Commit(failure)) << failure.message;
  EXPECT_EQ(file.Bytes(), 5);
  EXPECT_FALSE(std::filesystem::exists(file.TemporaryPath()));
}

TEST_F(OutputFileTest, AMissingFolderOrAFolderAsOutIsRefused) {
  for (const std::string& out : {_directory + "/no/such/movie.mp4", _directory}) {
    cli::OutputFile file;
    cli::Failure failure;
    EXPECT_FALSE(file.Prepare(out, failure)) << out;
    EXPECT_EQ(failure.exitCode, cli::kExitFailure);
  }
}

}  // namespace
}  // namespace tessel::testing
