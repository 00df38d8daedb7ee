// The host's failure switches for allocations through System, as tests use them.
#include <gtest/gtest.h>

#include "vorna/system.h"
#include "vorna_host.h"

namespace vorna {
namespace {

constexpr SourceLocation HERE{"allocation_switch_test", 1, 0};

TEST(AllocationSwitchTest, OneFailureLetsTheNextAllocationsThrough) {
  const Int refused = host::GetRefusedAllocationCount();
  host::FailOneAllocationAfter(1);
  void* first = System::Alloc(16, HERE);
  void* second = System::Alloc(16, HERE);
  void* third = System::Alloc(16, HERE);
  host::FailAllocationsAfter(-1);
  EXPECT_NE(first, nullptr);
  EXPECT_EQ(second, nullptr);
  EXPECT_NE(third, nullptr);
  EXPECT_EQ(host::GetRefusedAllocationCount(), refused + 1);
  System::Free(first);
  System::Free(third);
}

TEST(AllocationSwitchTest, FailuresAfterACountGoOnUntilLifted) {
  const Int refused = host::GetRefusedAllocationCount();
  host::FailAllocationsAfter(0);
  void* first = System::Alloc(16, HERE);
  void* second = System::Alloc(16, HERE);
  host::FailAllocationsAfter(-1);
  void* third = System::Alloc(16, HERE);
  EXPECT_EQ(first, nullptr);
  EXPECT_EQ(second, nullptr);
  EXPECT_NE(third, nullptr);
  EXPECT_EQ(host::GetRefusedAllocationCount(), refused + 2);
  System::Free(third);
}

}  // namespace
}  // namespace vorna
