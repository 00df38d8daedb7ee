// The pieces of tessel convert that need no host, in-process: the progress text, whole
// numbers with k and M, and the temporary output file.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

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
