#include <gtest/gtest.h>

#include <algorithm>

#include "host_environment.h"
#include "tessel_platform_control.h"
#include "vorna/errorbase.h"
#include "vorna/extensionpoint.h"

namespace vorna {
namespace {

using tessel::testing::Console;

constexpr const char* MODULE = "net.vorna.tessel_reel";

struct Balance {
  int64_t mfStartups;
  int64_t mfShutdowns;
  int64_t aviInits;
  int64_t aviExits;
};

Balance Counters() {
  TesselPlatformCounters c = TesselPlatformGetCounters();
  return {c.mfStartupCalls, c.mfShutdownCalls, c.aviInitCalls, c.aviExitCalls};
}

TEST(ModuleLoadingTest, LoadAndUnloadTwiceBalancesThePlatformStartUps) {
  Balance before = Counters();
  for (int round = 0; round < 2; ++round) {
    Result<vorna::host::LoadedModule*> loaded = vorna::host::LoadModule(MODULE);
    ASSERT_FALSE(loaded.IsError());
    Balance up = Counters();
    EXPECT_EQ(up.mfStartups - before.mfStartups, 2 * (round + 1) - 0) << "import and export each start once";
    EXPECT_EQ(up.aviInits - before.aviInits, round + 1);
    vorna::host::UnloadModule(loaded.GetValue());
  }
  Balance after = Counters();
  EXPECT_EQ(after.mfStartups - before.mfStartups, 4);
  EXPECT_EQ(after.mfShutdowns - before.mfShutdowns, 4);
  EXPECT_EQ(after.aviInits - before.aviInits, 2);
  EXPECT_EQ(after.aviExits - before.aviExits, 2);
}

TEST(ModuleLoadingTest, FailingStartUpReportsTheStatusAndLeavesThePlatformBalanced) {
  Balance before = Counters();
  TesselPlatformFailNextMFStartup(HRESULT(0x80070002));
  Result<vorna::host::LoadedModule*> failed = vorna::host::LoadModule(MODULE);
  ASSERT_TRUE(failed.IsError());
  EXPECT_TRUE(IsErrorOfClass(failed.GetError(), g_IllegalStateErrorObject));
  ErrorInterface error = ErrorOf(failed.GetError());
  EXPECT_EQ(error.GetLocation().line, 37);
  EXPECT_STREQ(error.GetLocation().file, "../../../frameworks/core.framework/source/vorna/win_com");
  Result<CString> message = error.GetMessage().GetCString();
  EXPECT_STREQ(message.GetValue().GetCString(), "Error 0x80070002: The system cannot find the file specified.");
  Balance after = Counters();
  EXPECT_EQ(after.mfStartups, before.mfStartups);
  EXPECT_EQ(after.mfShutdowns, before.mfShutdowns);
  EXPECT_EQ(after.aviInits, before.aviInits);

  Result<vorna::host::LoadedModule*> again = vorna::host::LoadModule(MODULE);
  ASSERT_FALSE(again.IsError()) << "the failure left nothing behind";
  vorna::host::UnloadModule(again.GetValue());
}

TEST(ModuleLoadingTest, FailingStageUndoesTheStagesBeforeItInReverse) {
  ASSERT_TRUE(vorna::host::SetConfiguration("g_greeterFailSecondStage", "true"));
  Console::Clear();
  Result<vorna::host::LoadedModule*> failed = vorna::host::LoadModule("net.vorna.test.greeter");
  ASSERT_TRUE(failed.IsError());
  EXPECT_TRUE(IsErrorOfClass(failed.GetError(), g_IllegalStateErrorObject));
  auto lines = Console::Lines();
  ASSERT_EQ(lines.size(), 3u);
  EXPECT_EQ(lines[0], "greeter stage 1 up\n");
  EXPECT_EQ(lines[1], "greeter stage 2 failing\n");
  EXPECT_EQ(lines[2], "greeter stage 1 down\n");
  auto classes = vorna::host::ListRegistry("vorna.Classes");
  EXPECT_EQ(std::count(classes.begin(), classes.end(), "net.vorna.test.greeter.GreeterImpl"), 0);
  ASSERT_TRUE(vorna::host::SetConfiguration("g_greeterFailSecondStage", "false"));
}

TEST(ModuleLoadingTest, MissingModuleIsAnIoError) {
  Result<vorna::host::LoadedModule*> loaded = vorna::host::LoadModule("net.vorna.no_such_module");
  ASSERT_TRUE(loaded.IsError());
  EXPECT_TRUE(IsErrorOfClass(loaded.GetError(), g_IoErrorObject));
}

TEST(ModuleLoadingTest, ConfigurationVariablesRegisterAndTakeSettings) {
  ASSERT_TRUE(vorna::host::SetConfiguration("g_mediaFoundationUseMSUrlReader", "true"));
  Result<vorna::host::LoadedModule*> loaded = vorna::host::LoadModule(MODULE);
  ASSERT_FALSE(loaded.IsError());
  bool found = false;
  for (const auto& variable : vorna::host::ListConfiguration()) {
    if (variable.name != "g_mediaFoundationUseMSUrlReader") continue;
    found = true;
    EXPECT_TRUE(variable.value);
    EXPECT_EQ(variable.help, "uses the original microsoft url reader instead our own byte stream reader.");
  }
  EXPECT_TRUE(found);
  EXPECT_FALSE(vorna::host::SetConfiguration("g_mediaFoundationUseMSUrlReader", "maybe"));
  ASSERT_TRUE(vorna::host::SetConfiguration("g_mediaFoundationUseMSUrlReader", "false"));
  vorna::host::UnloadModule(loaded.GetValue());
}

}  // namespace
}  // namespace vorna
