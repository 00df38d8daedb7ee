#include <gtest/gtest.h>

#include "host_environment.h"
#include "vorna/configuration.h"
#include "vorna/diagnostics.h"
#include "vorna/formatstring.h"

namespace vorna {
namespace {

using tessel::testing::Console;

class DiagnosticsTest : public ::testing::Test {
 protected:
  void SetUp() override {
    Console::Clear();
    SetDebuggerFlag(false);
  }
  void TearDown() override {
    vorna::host::SetOutputMask(7);
    ResetOutputMask();
    SetDebuggerFlag(false);
  }
};

TEST_F(DiagnosticsTest, LevelsAndLineEndsOfLinesOfAnyLength) {
  const std::string longText(5000, 'x');
  DiagnosticOutput(OUTPUT_DIAGNOSTIC, "plain", 1, "a.cpp");
  DiagnosticOutput(OUTPUT_WARNING, "careful", 1, "a.cpp");
  DiagnosticOutput(OUTPUT_CRITICAL, "broken", 1, "a.cpp");
  DiagnosticOutput(0x20000001, "no end", 1, "a.cpp");
  DiagnosticOutput(OUTPUT_DIAGNOSTIC, longText.c_str(), 1, "a.cpp");
  auto lines = Console::Lines();
  ASSERT_EQ(lines.size(), 5u);
  EXPECT_EQ(lines[0], "plain\n");
  EXPECT_EQ(lines[1], "WARNING: careful\n");
  EXPECT_EQ(lines[2], "CRITICAL: broken\n");
  EXPECT_EQ(lines[3], "no end");
  EXPECT_EQ(lines[4], longText + "\n") << "a long line is written whole";
}

TEST_F(DiagnosticsTest, LocationBehindWithoutDebuggerInFrontWithOne) {
  DiagnosticOutput(CRITICAL_WITH_LOCATION, "Stop", 37, "../../../frameworks/core.framework/source/vorna/win_com");
  DiagnosticOutput(CRITICAL_WITH_LOCATION, "x", 3, "c:\\src\\media_win_mf.cpp");
  SetDebuggerFlag(true);
  g_enableDebugBreak = false;
  DiagnosticOutput(CRITICAL_WITH_LOCATION, "Stop", 37, "../../../frameworks/core.framework/source/vorna/win_com");
  ReportAssertion("Assertion failed: x", 5, "dir\\file.cpp");
  g_enableDebugBreak = true;
  auto lines = Console::Lines();
  ASSERT_EQ(lines.size(), 4u);
  EXPECT_EQ(lines[0], "CRITICAL: Stop [win_com(37)]\n");
  EXPECT_EQ(lines[1], "CRITICAL: x [media_win_mf.cpp(3)]\n") << "a backslash path gives its file name too";
  EXPECT_EQ(lines[2], "../../../frameworks/core.framework/source/vorna/win_com(37): CRITICAL: Stop\n");
  EXPECT_EQ(lines[3], "dir\\file.cpp(5): CRITICAL: Assertion failed: x\n");
}

TEST_F(DiagnosticsTest, HostMaskFiltersLevels) {
  vorna::host::SetOutputMask(6);
  ResetOutputMask();
  DiagnosticOutput(OUTPUT_DIAGNOSTIC, "hidden", 1, "a.cpp");
  DiagnosticOutput(OUTPUT_WARNING, "shown", 1, "a.cpp");
  auto lines = Console::Lines();
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_EQ(lines[0], "WARNING: shown\n");
}

TEST_F(DiagnosticsTest, OutputStringTakesFormattedTextOrReportsNull) {
  DiagnosticOutputString(OUTPUT_DIAGNOSTIC, FormatString("Video rotation found: @", Int32(90)), 1, "a.cpp");
  DiagnosticOutputString(OUTPUT_DIAGNOSTIC, nullptr, 9, "b.cpp");
  auto lines = Console::Lines();
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[0], "Video rotation found: 90\n");
  EXPECT_EQ(lines[1], "CRITICAL: Console output failed [b.cpp(9)]\n");
}

TEST(ConfigurationTest, TableHoldsTwoHundredFiftySixAndNoMore) {
  static Bool variables[CONFIGURATION_TABLE_SIZE + 1];
  Int count = 0;
  GetConfigurationTable(count);
  for (Int i = count; i < CONFIGURATION_TABLE_SIZE; ++i)
    variables[i] = ConfigurationVariable("g_filler", &variables[i], false, CONFIGURATION_TYPE_BOOL, "filler");
  GetConfigurationTable(count);
  EXPECT_EQ(count, CONFIGURATION_TABLE_SIZE);
  Bool last = false;
  EXPECT_TRUE(ConfigurationVariable("g_oneTooMany", &last, true, CONFIGURATION_TYPE_BOOL, "dropped"));
  EXPECT_TRUE(last) << "the 257th holds its default at once";
  GetConfigurationTable(count);
  EXPECT_EQ(count, CONFIGURATION_TABLE_SIZE);
}

}  // namespace
}  // namespace vorna
