#include <gtest/gtest.h>

#include "tessel_platform_control.h"
#include "windows_version.h"

namespace {

class WindowsVersionTest : public ::testing::Test {
 protected:
  void TearDown() override { TesselPlatformSetWindowsVersion(10, 0, 0); }
};

TEST_F(WindowsVersionTest, WindowsEightOrNewerIsAskedAsAtLeastSixTwo) {
  EXPECT_TRUE(tessel::IsWindowsVersionOrGreater(6, 2, 0)) << "the stand-in reports 10.0";
  TesselPlatformSetWindowsVersion(6, 2, 0);
  EXPECT_TRUE(tessel::IsWindowsVersionOrGreater(6, 2, 0));
  TesselPlatformSetWindowsVersion(6, 1, 1);
  EXPECT_FALSE(tessel::IsWindowsVersionOrGreater(6, 2, 0)) << "Windows 7 with its service pack";
  EXPECT_TRUE(tessel::IsWindowsVersionOrGreater(6, 1, 1));
  EXPECT_FALSE(tessel::IsWindowsVersionOrGreater(6, 1, 2));
  TesselPlatformSetWindowsVersion(5, 9, 0);
  EXPECT_FALSE(tessel::IsWindowsVersionOrGreater(6, 0, 0));
}

}  // namespace
