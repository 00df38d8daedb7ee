#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "vorna/id.h"
#include "vorna/tripleidtable.h"

namespace vorna {
namespace {

TEST(IdTest, PackedWordHoldsHashLengthAndOwnership) {
  constexpr Id id("net.vorna.tessel_reel");
  EXPECT_EQ(id.GetPackedWord() >> 52, 21u);
  EXPECT_EQ(id.GetHash(), Id::HashText("net.vorna.tessel_reel", 21) & Id::HASH_MASK);
  EXPECT_FALSE(id.IsOwned());

  Id owned;
  ASSERT_TRUE(owned.Init("net.vorna.tessel_reel"));
  EXPECT_TRUE(owned.IsOwned());
  EXPECT_NE(owned.GetCString(), id.GetCString());
  EXPECT_EQ(owned.GetPackedWord() ^ id.GetPackedWord(), Id::OWNED_BIT);
  EXPECT_TRUE(owned == id);
}

TEST(IdTest, HashIsTheThirtyOneMultiplierOverUnsignedBytes) {
  EXPECT_EQ(Id("a").GetHash(), 97u);
  EXPECT_EQ(Id("ab").GetHash(), 97u * 31 + 98);
  const char high[] = {char(0xE4), 0};
  EXPECT_EQ(Id(high).GetHash(), 0xE4u);
}

TEST(IdTest, EmptyAndNullAreTheSameZeroWords) {
  Id fromNull(static_cast<const Char*>(nullptr));
  Id fromEmpty("");
  EXPECT_EQ(fromNull.GetPointer(), nullptr);
  EXPECT_EQ(fromEmpty.GetPointer(), nullptr);
  EXPECT_EQ(fromNull.GetPackedWord(), 0u);
  EXPECT_EQ(fromEmpty.GetPackedWord(), 0u);
  Id initialised;
  EXPECT_TRUE(initialised.Init(""));
  EXPECT_TRUE(initialised.IsEmpty());
}

TEST(IdTest, CopiesShareTheOwnedTextUntilTheLastGoes) {
  Id a;
  ASSERT_TRUE(a.Init("shared text"));
  Id b = a;
  EXPECT_EQ(a.GetPointer(), b.GetPointer());
  a.Reset();
  EXPECT_STREQ(b.GetCString(), "shared text");
  Id moved = std::move(b);
  EXPECT_TRUE(b.IsEmpty());
  EXPECT_STREQ(moved.GetCString(), "shared text");
}

TEST(IdTest, DifferentTextsOfEqualLengthDiffer) {
  EXPECT_FALSE(Id("movie.mp4") == Id("movie.avi"));
  EXPECT_FALSE(Id("abc") == Id("abcd"));
}

TEST(TripleIdTableTest, OneIdPerTripleAcrossThreads) {
  const Id* seen[8] = {};
  std::vector<std::thread> threads;
  for (int t = 0; t < 8; ++t)
    threads.emplace_back([&seen, t] { seen[t] = &GetTripleId("vorna.FileFormats", ":", "movie.threaded"); });
  for (auto& thread : threads) thread.join();
  for (const Id* id : seen) EXPECT_EQ(id, seen[0]);
  EXPECT_STREQ(seen[0]->GetCString(), "vorna.FileFormats:movie.threaded");
  EXPECT_FALSE(seen[0]->IsOwned());
  EXPECT_EQ(seen[0]->GetHash(), Id("vorna.FileFormats:movie.threaded").GetHash());
  EXPECT_NE(&GetTripleId("vorna.FileFormats", ":", "movie.other"), seen[0]);
}

}  // namespace
}  // namespace vorna
