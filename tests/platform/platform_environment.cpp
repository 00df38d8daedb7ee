// Starts the platform once for the whole test program, as the module does at load.
#include <gtest/gtest.h>

#include "mfapi.h"

namespace {

class PlatformStarted : public ::testing::Environment {
 public:
  void SetUp() override { ASSERT_EQ(MFStartup(MF_VERSION, MFSTARTUP_FULL), S_OK); }
  void TearDown() override { EXPECT_EQ(MFShutdown(), S_OK); }
};

const auto* const kEnvironment = ::testing::AddGlobalTestEnvironment(new PlatformStarted);

}  // namespace
