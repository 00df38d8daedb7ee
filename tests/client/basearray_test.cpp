#include <gtest/gtest.h>

#include "host_environment.h"
#include "vorna/basearray.h"

namespace vorna {
namespace {

TEST(BaseArrayTest, ByteArraysGrowInSixteens) {
  BaseArray<Char> bytes;
  EXPECT_EQ(bytes.GetCapacity(), 0);
  ASSERT_NE(bytes.Append('a'), nullptr);
  EXPECT_EQ(bytes.GetCapacity(), 16);
  for (int i = 1; i < 17; ++i) ASSERT_NE(bytes.Append(Char('a' + i % 26)), nullptr);
  EXPECT_EQ(bytes.GetCount(), 17);
  EXPECT_EQ(bytes.GetCapacity(), 32) << "(3 * 16 + 3) / 2 = 25, rounded up to 32";
}

TEST(BaseArrayTest, AppendAndBulkGrowth) {
  BaseArray<Int> values;
  Int expected[] = {1, 3, 6, 10};
  for (Int want : expected) {
    while (values.GetCount() < values.GetCapacity() || values.GetCapacity() == 0) ASSERT_NE(values.Append(Int(0)), nullptr);
    EXPECT_EQ(values.GetCapacity(), want);
    ASSERT_NE(values.Append(Int(0)), nullptr);
  }
  BaseArray<Int> bulk;
  Int five[5] = {1, 2, 3, 4, 5};
  ASSERT_TRUE(bulk.Append(five, 5));
  EXPECT_EQ(bulk.GetCapacity(), 5) << "from empty exactly k";
  ASSERT_TRUE(bulk.Append(five, 1));
  EXPECT_EQ(bulk.GetCapacity(), 9) << "3 * (5 + 1) / 2";
  BaseArray<Int> exact;
  ASSERT_TRUE(exact.EnsureCapacity(7));
  EXPECT_EQ(exact.GetCapacity(), 7);
}

TEST(BaseArrayTest, EmptyArrayPointsAtItselfAndMovesRepoint) {
  BaseArray<Int> a;
  EXPECT_EQ(static_cast<void*>(a.GetData()), static_cast<void*>(&a));
  BaseArray<Int> b(std::move(a));
  EXPECT_EQ(static_cast<void*>(b.GetData()), static_cast<void*>(&b));
  ASSERT_NE(b.Append(Int(4)), nullptr);
  BaseArray<Int> c(std::move(b));
  EXPECT_EQ(c[0], 4);
  EXPECT_EQ(static_cast<void*>(b.GetData()), static_cast<void*>(&b));
  EXPECT_EQ(b.GetCount(), 0);
}

TEST(BaseArrayTest, FailedGrowthLeavesTheArrayAsItWas) {
  BaseArray<Int> values;
  ASSERT_NE(values.Append(Int(1)), nullptr);
  vorna::host::FailAllocationsAfter(0);
  EXPECT_EQ(values.Append(Int(2)), nullptr);
  vorna::host::FailAllocationsAfter(-1);
  EXPECT_EQ(values.GetCount(), 1);
  EXPECT_EQ(values.GetCapacity(), 1);
  EXPECT_EQ(values[0], 1);
}

}  // namespace
}  // namespace vorna
