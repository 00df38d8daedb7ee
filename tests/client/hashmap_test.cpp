#include <gtest/gtest.h>

#include <vector>

#include "host_environment.h"
#include "vorna/hashmap.h"

namespace vorna {
namespace {

template <typename MAP>
std::vector<Int> KeysInOrder(const MAP& map) {
  std::vector<Int> keys;
  for (const auto& entry : map) keys.push_back(Int(entry.GetKey()));
  return keys;
}

TEST(HashMapTest, FirstTableAndDoubling) {
  HashMap<Int32, Int> map;
  EXPECT_EQ(map.GetTableLength(), 0) << "mask -1 before the first entry";
  for (Int32 i = 0; i < 41; ++i) ASSERT_FALSE(map.Insert(i, Int(i)).IsError());
  EXPECT_EQ(map.GetTableLength(), 64);
  EXPECT_EQ(map.GetThreshold(), 41);
  ASSERT_FALSE(map.Insert(Int32(41), Int(41)).IsError());
  EXPECT_EQ(map.GetTableLength(), 128) << "the 42nd entry doubles the table";
  EXPECT_EQ(map.GetThreshold(), 83);
  for (Int32 i = 0; i < 42; ++i) ASSERT_NE(map.Find(i), nullptr) << i;
  EXPECT_EQ(map.Find(Int32(42)), nullptr);
}

TEST(HashMapTest, LoadFactorZeroNeverGrows) {
  HashMap<Int32, Int> map(0.0);
  for (Int32 i = 0; i < 200; ++i) ASSERT_FALSE(map.Insert(i, Int(i)).IsError());
  EXPECT_EQ(map.GetTableLength(), 32);
  EXPECT_EQ(map.GetThreshold(), MAXVALUE_INT);
  EXPECT_EQ(map.GetCount(), 200);
}

// Keys from start downwards that each get a bucket of their own in tables of 64 and 128,
// so that the iteration order is the order of the buckets' first use.
std::vector<Int32> KeysWithOwnBuckets(Int32 start, size_t count) {
  std::vector<Int32> keys;
  std::vector<bool> used(128);
  for (Int32 key = start; keys.size() < count; --key) {
    const UInt32 bucket = HashUInt32(UInt32(key)) & 127;
    if (used[bucket] || used[bucket ^ 64]) continue;
    used[bucket] = true;
    keys.push_back(key);
  }
  return keys;
}

TEST(HashMapTest, IterationFollowsFirstUseAcrossGrowthAndErase) {
  HashMap<Int32, Int> map;
  std::vector<Int> expected;
  for (Int32 key : KeysWithOwnBuckets(5000, 60)) {
    ASSERT_FALSE(map.Insert(key, Int(key)).IsError());
    expected.push_back(key);
    if (expected.size() == 41) {
      EXPECT_EQ(KeysInOrder(map), expected) << "in the first table";
    }
  }
  EXPECT_EQ(map.GetTableLength(), 128);
  EXPECT_EQ(KeysInOrder(map), expected) << "growth relinks in the old order";
  EXPECT_TRUE(map.Erase(Int32(expected[1])));
  EXPECT_FALSE(map.Erase(Int32(expected[1])));
  expected.erase(expected.begin() + 1);
  EXPECT_EQ(KeysInOrder(map), expected);
  EXPECT_EQ(map.GetCount(), Int(expected.size()));
}

TEST(HashMapTest, CollidingKeysShareAChain) {
  HashMap<Int32, Int> map;
  // 0 and 68 meet in bucket 0 of the first table.
  ASSERT_EQ(HashUInt32(68) & 63, HashUInt32(0) & 63);
  for (Int32 key : {68, 5, 0}) ASSERT_FALSE(map.Insert(key, Int(key)).IsError());
  EXPECT_EQ(KeysInOrder(map), (std::vector<Int>{68, 0, 5})) << "a chain is walked with its bucket";
  EXPECT_TRUE(map.Erase(Int32(68)));
  EXPECT_EQ(map.Find(Int32(0))->GetValue(), 0);
  EXPECT_EQ(KeysInOrder(map), (std::vector<Int>{0, 5})) << "the bucket keeps its place";
}

TEST(HashMapTest, InsertKeepsAndInsertOrAssignReplaces) {
  HashMap<Id, Int> map;
  Bool created = false;
  ASSERT_FALSE(map.Insert(Id("net.vorna.a"), Int(1), &created).IsError());
  EXPECT_TRUE(created);
  Result<HashMap<Id, Int>::Entry*> again = map.Insert(Id("net.vorna.a"), Int(2), &created);
  EXPECT_FALSE(created);
  EXPECT_EQ(again.GetValue()->GetValue(), 1);
  ASSERT_FALSE(map.InsertOrAssign(Id("net.vorna.a"), Int(3)).IsError());
  EXPECT_EQ(map.Find(Id("net.vorna.a"))->GetValue(), 3);
  EXPECT_EQ(map.GetCount(), 1);
}

TEST(HashMapTest, CStringKeysFindByText) {
  HashMap<CString, Int> map;
  CString key;
  ASSERT_TRUE(key.Set("timer"));
  ASSERT_FALSE(map.Insert(key, Int(7)).IsError());
  const Char text[] = {'t', 'i', 'm', 'e', 'r', 0};
  ASSERT_NE(map.Find(static_cast<const Char*>(text)), nullptr);
  EXPECT_EQ(map.Find(static_cast<const Char*>(text))->GetValue(), 7);
  EXPECT_EQ(map.Find(static_cast<const Char*>(nullptr)), nullptr);
}

TEST(HashMapTest, FailedGrowthKeepsTheOldTable) {
  HashMap<Int32, Int> map;
  for (Int32 i = 0; i < 41; ++i) ASSERT_FALSE(map.Insert(i, Int(i)).IsError());
  vorna::host::FailAllocationsAfter(0);
  Result<HashMap<Int32, Int>::Entry*> failed = map.Insert(Int32(41), Int(41));
  vorna::host::FailAllocationsAfter(-1);
  EXPECT_TRUE(IsErrorOfClass(failed.GetError(), g_OutOfMemoryErrorObject)) << "the node could not be made";
  EXPECT_EQ(map.GetTableLength(), 64);
  EXPECT_EQ(map.GetCount(), 41);

  for (Int32 i = 41; i < 50; ++i) {
    vorna::host::FailAllocationsAfter(1);  // the node succeeds, the table of 128 not
    Result<HashMap<Int32, Int>::Entry*> result = map.Insert(i, Int(i));
    vorna::host::FailAllocationsAfter(-1);
    ASSERT_FALSE(result.IsError()) << "a failed growth is no error";
  }
  EXPECT_EQ(map.GetTableLength(), 64);
  EXPECT_EQ(map.GetCount(), 50);
  for (Int32 i = 0; i < 50; ++i) ASSERT_EQ(map.Find(i)->GetValue(), i);
  ASSERT_FALSE(map.Insert(Int32(50), Int(50)).IsError());
  EXPECT_EQ(map.GetTableLength(), 128) << "the next insert with memory grows";
}

TEST(HashMapTest, ResetAndMoveReleaseEverything) {
  const Int before = vorna::host::GetLiveAllocationCount();
  {
    HashMap<CString, CString> map;
    for (Int i = 0; i < 60; ++i) {
      CString key, value;
      const Char text[] = {Char('a' + i % 26), Char('a' + i / 26), 0};
      ASSERT_TRUE(key.Set(text) && value.Set(text));
      ASSERT_FALSE(map.Insert(std::move(key), std::move(value)).IsError());
    }
    HashMap<CString, CString> moved(std::move(map));
    EXPECT_EQ(map.GetTableLength(), 0);
    EXPECT_EQ(moved.GetCount(), 60);
    EXPECT_STREQ(moved.Find("ab")->GetValue().GetCString(), "ab");
    moved.Reset();
    EXPECT_EQ(moved.GetCount(), 0);
    EXPECT_EQ(moved.GetTableLength(), 0);
    EXPECT_EQ(vorna::host::GetLiveAllocationCount(), before);
    ASSERT_FALSE(moved.Insert(CString(), CString()).IsError()) << "usable again after a reset";
  }
  EXPECT_EQ(vorna::host::GetLiveAllocationCount(), before);
}

TEST(HashTraitsTest, HostHashesOfNumbersAndArrays) {
  EXPECT_EQ(HashUInt32(0), 0u);
  EXPECT_EQ(HashUInt32(1), 1u);
  EXPECT_EQ(HashUInt32(0x1000), 0x1121u) << "x ^ (x >> 12) = 0x1001, then ^ >> 7 ^ >> 4";
  EXPECT_EQ(HashUInt32(0xFFFFFFFFu), 0xf1f0ef1fu);
  EXPECT_EQ(HashUInt32(123456789u), 0x720b420u);
  EXPECT_EQ(HashTraits<Int32>::GetHashCode(-1), HashTraits<UInt32>::GetHashCode(0xFFFFFFFFu));
  Int32 values[] = {1, 2, 3};
  EXPECT_EQ(HashTraits<Block<Int32>>::GetHashCode({values, 3}), (1u * 31 + 2) * 31 + HashUInt32(3));
  EXPECT_EQ(HashTraits<const Char*>::GetHashCode("ab"), Id("ab").GetHash());
  EXPECT_EQ(HashTraits<const Char*>::GetHashCode(nullptr), HashTraits<const Char*>::GetHashCode(""));
}

}  // namespace
}  // namespace vorna
