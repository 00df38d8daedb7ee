#include <gtest/gtest.h>

#include "host_environment.h"
#include "vorna/array.h"
#include "vorna/datadescription.h"
#include "vorna/datatypelib.h"
#include "vorna/string.h"

namespace vorna {
namespace {

TEST(ArrayTest, CopiesShareTheBlockUntilOneWrites) {
  Int before = vorna::host::GetLiveAllocationCount();
  {
    Array<Int> a;
    ASSERT_NE(a.MakeWritable(), nullptr);
    ASSERT_NE(a.MakeWritable()->Append(Int(1)), nullptr);
    Array<Int> b = a;
    EXPECT_TRUE(a.IsShared());
    ASSERT_NE(b.MakeWritable()->Append(Int(2)), nullptr);
    EXPECT_FALSE(a.IsShared());
    EXPECT_EQ(a.GetCount(), 1);
    EXPECT_EQ(b.GetCount(), 2);
    EXPECT_EQ(b[1], 2);
  }
  EXPECT_EQ(vorna::host::GetLiveAllocationCount(), before);
}

TEST(ArrayTest, FailedCopyLeavesTheSharedBlock) {
  Array<Int> a;
  ASSERT_NE(a.MakeWritable()->Append(Int(5)), nullptr);
  Array<Int> b = a;
  vorna::host::FailAllocationsAfter(0);
  EXPECT_EQ(b.MakeWritable(), nullptr);
  vorna::host::FailAllocationsAfter(-1);
  EXPECT_TRUE(b.IsShared());
  EXPECT_EQ(b[0], 5);
}

TEST(BlockDataTest, BlockTypesAreOnePerElementTypeAndViewTheirElements) {
  static const String suffixes[] = {String::FromLiteral("mp4"), String::FromLiteral("m4v")};
  EXPECT_EQ(BlockDataType<String>::Get(), BlockDataType<const String>::Get());
  EXPECT_NE(BlockDataType<String>::Get(), BlockDataType<Id>::Get());
  Data data = MakeBlockData(Block<const String>{suffixes, 2});
  Block<const String> back = GetBlockFromData<String>(data);
  EXPECT_EQ(back.data, suffixes);
  EXPECT_EQ(back.count, 2);
  EXPECT_EQ(GetBlockFromData<Id>(data).count, 0) << "a block of another element type reads as empty";
}

TEST(DataDescriptionTest, EntriesStayInTheOrderAddedAndCopiesAreApart) {
  DataDictionary first;
  DataDictionary second;
  ASSERT_FALSE(first.Set(Int32(1), Int32(10)).IsError());
  ASSERT_FALSE(second.Set(Int32(1), Int32(20)).IsError());
  DataDescription description;
  ASSERT_FALSE(description.Add(first).IsError());
  DataDescription copy = description;
  ASSERT_FALSE(copy.Add(second).IsError());
  EXPECT_EQ(description.GetCount(), 1);
  ASSERT_EQ(copy.GetCount(), 2);
  EXPECT_EQ(copy.GetEntry(1)->Get<Int32>(Int32(1)).GetValue(), 20);
}

}  // namespace
}  // namespace vorna
