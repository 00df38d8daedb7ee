// GlobalAlloc and its companions: zeroed blocks, lock counts, handles that are not (or
// no longer) the platform's, and an injected allocation failure.
#include <gtest/gtest.h>

#include <algorithm>

#include "tessel_platform_control.h"
#include "windows.h"

namespace {

TEST(GlobalMemory, ZeroInitGivesAZeroedBlockOfItsSize) {
  HGLOBAL memory = GlobalAlloc(GHND, 100);
  ASSERT_NE(memory, nullptr);
  EXPECT_EQ(GlobalSize(memory), 100u);
  auto* bytes = static_cast<uint8_t*>(GlobalLock(memory));
  ASSERT_NE(bytes, nullptr);
  EXPECT_EQ(std::count(bytes, bytes + 100, 0), 100);
  GlobalUnlock(memory);
  EXPECT_EQ(GlobalFree(memory), nullptr);
}

TEST(GlobalMemory, LocksAreCountedAndUnlockSaysWhetherOneRemains) {
  HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, 8);
  void* first = GlobalLock(memory);
  EXPECT_EQ(GlobalLock(memory), first);
  EXPECT_TRUE(GlobalUnlock(memory));
  SetLastError(ERROR_INVALID_PARAMETER);
  EXPECT_FALSE(GlobalUnlock(memory));
  EXPECT_EQ(GetLastError(), ERROR_SUCCESS);
  EXPECT_FALSE(GlobalUnlock(memory));
  EXPECT_EQ(GetLastError(), ERROR_NOT_LOCKED);
  GlobalFree(memory);
}

TEST(GlobalMemory, AFreedOrForeignHandleIsRefused) {
  HGLOBAL freed = GlobalAlloc(GMEM_FIXED, 16);
  ASSERT_EQ(GlobalFree(freed), nullptr);
  int local = 0;
  for (HGLOBAL handle : {freed, static_cast<HGLOBAL>(&local)}) {
    SetLastError(0);
    EXPECT_EQ(GlobalLock(handle), nullptr);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
    EXPECT_EQ(GlobalSize(handle), 0u);
    EXPECT_EQ(GlobalFree(handle), handle);
  }
}

TEST(GlobalMemory, AnInjectedFailureFailsTheNextAllocationOnly) {
  TesselPlatformFailNextGlobalAlloc(ERROR_NOT_ENOUGH_MEMORY);
  EXPECT_EQ(GlobalAlloc(GHND, 32), nullptr);
  EXPECT_EQ(GetLastError(), ERROR_NOT_ENOUGH_MEMORY);
  HGLOBAL memory = GlobalAlloc(GHND, 32);
  EXPECT_NE(memory, nullptr);
  GlobalFree(memory);
}

}  // namespace
