#include <gtest/gtest.h>

#include "host_environment.h"
#include "vorna/delegate.h"
#include "vorna/pixelhandler.h"

namespace vorna {
namespace {

struct Counts {
  int made = 0;
  int copied = 0;
  int moved = 0;
  int destroyed = 0;
};

// A functor of WORDS words that books its life in counts.
template <int WORDS>
struct Counted {
  Counts* counts;
  Int payload[WORDS - 1] = {};
  explicit Counted(Counts* c, Int value) : counts(c) {
    payload[0] = value;
    ++counts->made;
  }
  Counted(const Counted& other) : counts(other.counts) {
    payload[0] = other.payload[0];
    ++counts->copied;
  }
  Counted(Counted&& other) noexcept : counts(other.counts) {
    payload[0] = other.payload[0];
    ++counts->moved;
  }
  ~Counted() { ++counts->destroyed; }
  Int operator()(Int x) const { return payload[0] + x; }
};

using Small = Counted<5>;
using Large = Counted<6>;
using Call = Delegate<Int(Int)>;

const void* WordsOf(const DelegateBase& d, int word) { return reinterpret_cast<void* const*>(&d)[word]; }

TEST(DelegateTest, SmallFunctorsLieInPlaceAndMoveAlong) {
  Counts counts;
  const Int before = vorna::host::GetLiveAllocationCount();
  {
    Call a(Small(&counts, 10));
    EXPECT_EQ(vorna::host::GetLiveAllocationCount(), before);
    EXPECT_TRUE(a.IsInPlace());
    EXPECT_EQ(WordsOf(a, 5), static_cast<const void*>(&a));
    ASSERT_NE(a.GetManager(), nullptr);
    EXPECT_EQ(a.GetManager()(nullptr, nullptr, DelegateBase::GET_SIZE), Int(sizeof(Small)));
    EXPECT_EQ(a(5), 15);

    Call b(std::move(a));
    EXPECT_EQ(WordsOf(b, 5), static_cast<const void*>(&b)) << "word 5 follows the functor";
    for (int word = 5; word < 8; ++word) EXPECT_EQ(WordsOf(a, word), nullptr) << word;
    EXPECT_TRUE(a.IsEmpty());
    EXPECT_EQ(b(1), 11);

    Call c(b);
    EXPECT_EQ(c(2), 12);
    EXPECT_EQ(b(2), 12);
  }
  EXPECT_EQ(counts.made + counts.copied + counts.moved, counts.destroyed);
  EXPECT_EQ(counts.copied, 1);
  EXPECT_EQ(vorna::host::GetLiveAllocationCount(), before);
}

TEST(DelegateTest, LargeFunctorsLieOnTheHeapAndMoveByAddress) {
  Counts counts;
  const Int before = vorna::host::GetLiveAllocationCount();
  {
    Call a(Large(&counts, 20));
    EXPECT_FALSE(a.IsInPlace());
    EXPECT_EQ(vorna::host::GetLiveAllocationCount(), before + 1);
    const void* functor = a.GetFunctor();
    const int movesBefore = counts.moved;
    Call b(std::move(a));
    EXPECT_EQ(b.GetFunctor(), functor) << "a functor on the heap isn't moved";
    EXPECT_EQ(counts.moved, movesBefore);
    EXPECT_TRUE(a.IsEmpty());
    Call c;
    ASSERT_FALSE(c.CopyFrom(b).IsError());
    EXPECT_EQ(vorna::host::GetLiveAllocationCount(), before + 2);
    EXPECT_EQ(c(1), 21);
    b = nullptr;
    EXPECT_EQ(vorna::host::GetLiveAllocationCount(), before + 1);
  }
  EXPECT_EQ(counts.made + counts.copied + counts.moved, counts.destroyed);
  EXPECT_EQ(vorna::host::GetLiveAllocationCount(), before);
}

TEST(DelegateTest, OutOfMemoryLeavesItEmpty) {
  Counts counts;
  Call a;
  vorna::host::FailAllocationsAfter(0);
  Result<void> set = a.Set(Large(&counts, 1));
  vorna::host::FailAllocationsAfter(-1);
  EXPECT_TRUE(IsErrorOfClass(set.GetError(), g_OutOfMemoryErrorObject));
  EXPECT_TRUE(a.IsEmpty());
  ASSERT_FALSE(a.Set(Large(&counts, 1)).IsError());
  Call b;
  vorna::host::FailAllocationsAfter(0);
  Result<void> copy = b.CopyFrom(a);
  vorna::host::FailAllocationsAfter(-1);
  EXPECT_TRUE(copy.IsError());
  EXPECT_TRUE(b.IsEmpty());
}

TEST(DelegateTest, BytewiseFunctorsNeedNoManager) {
  int hits = 0;
  Delegate<void()> a([&hits] { ++hits; });
  EXPECT_EQ(a.GetManager(), nullptr);
  Delegate<void()> b(std::move(a));
  EXPECT_EQ(WordsOf(b, 5), static_cast<const void*>(&b));
  b();
  a();  // empty: nothing happens
  Delegate<void()> c(b);
  c();
  EXPECT_EQ(hits, 2);
  Delegate<Result<Int>()> none;
  EXPECT_TRUE(none().IsError()) << "an empty delegate gives the null-return error";
}

TEST(PixelHandlerTest, GiveUpGetsTheStructThenTheReferenceGoes) {
  GetPixelHandlerStruct<> handler;
  int rows = 0;
  const void* givenUp = nullptr;
  ASSERT_FALSE(handler.getLine.Set([&rows](const LineRange&, const LineDestination&, Int) -> Result<void> {
    ++rows;
    return OK;
  }).IsError());
  ASSERT_FALSE(handler.giveUp.Set([&givenUp](GetPixelHandlerStruct<>* h) { givenUp = h; }).IsError());
  EXPECT_FALSE(handler.getLine(LineRange{0, 0, 4}, LineDestination{}, 0).IsError());
  EXPECT_EQ(rows, 1);
  GetPixelHandlerStruct<> moved(std::move(handler));
  moved.GiveUpNow();
  EXPECT_EQ(givenUp, &moved);
  EXPECT_TRUE(moved.getLine.IsEmpty());
  EXPECT_TRUE(handler.getLine.IsEmpty()) << "moved out";
}

TEST(PixelHandlerTest, ReferenceIsReleasedAfterTheGiveUpCall) {
  ErrorWord word = CreateError(VORNA_SOURCE_LOCATION, 3).word;
  const void* object = *word;
  const UInt count = RefCounter::GetCount(object);
  UInt countDuringGiveUp = 0;
  {
    GetPixelHandlerStruct<> handler;
    handler.reference = ObjectRef(ErrorOf(word));
    ASSERT_FALSE(handler.giveUp.Set([&](GetPixelHandlerStruct<>*) { countDuringGiveUp = RefCounter::GetCount(object); })
                     .IsError());
  }
  EXPECT_EQ(countDuringGiveUp, count + 1);
  EXPECT_EQ(RefCounter::GetCount(object), count);
}

}  // namespace
}  // namespace vorna
