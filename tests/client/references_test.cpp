#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

#include "host_environment.h"
#include "vorna/errorbase.h"

namespace vorna {
namespace {

ErrorRef NewError(Int line) {
  return ErrorRef(ErrorOf(CreateError({"references.cpp", line, 0}, 3).word));
}

TEST(ReferenceTest, CountsLiveInTheWordBeforeTheObject) {
  ErrorRef a = NewError(1);
  UInt start = RefCounter::GetCount(a.GetPointer());
  {
    ErrorRef b = a;
    EXPECT_EQ(RefCounter::GetCount(a.GetPointer()), start + 1);
    EXPECT_EQ(RefCounter::Of(a.GetPointer()).load() & 7, 0u) << "the low three bits are flags";
  }
  EXPECT_EQ(RefCounter::GetCount(a.GetPointer()), start);
}

TEST(ReferenceTest, WritingThroughASharedReferenceMakesAPrivateCopy) {
  ErrorRef shared = NewError(2);
  ErrorRef writer = shared;
  Result<ErrorInterface> writable = writer.MakeWritable();
  ASSERT_FALSE(writable.IsError());
  EXPECT_NE(writer.GetPointer(), shared.GetPointer());
  writable.GetValue().SetLocation({"changed.cpp", 9, 0});
  EXPECT_EQ(shared.GetLocation().line, 2);
  EXPECT_EQ(writer.GetLocation().line, 9);
  Result<ErrorInterface> again = writer.MakeWritable();
  EXPECT_EQ(again.GetValue().GetPointer(), writer.GetPointer()) << "an exclusive block is written in place";
}

TEST(ReferenceTest, AtomicCopyOnWriteServesReadersWhileItIsReplaced) {
  Int before = vorna::host::GetLiveAllocationCount();
  {
    ACOWRef<ErrorInterface> current(NewError(0));
    std::atomic<bool> stop{false};
    std::vector<std::thread> readers;
    for (int t = 0; t < 3; ++t)
      readers.emplace_back([&] {
        while (!stop) {
          ErrorRef seen = current.Load();
          EXPECT_TRUE(seen);
          EXPECT_GE(seen.GetLocation().line, 0);
        }
      });
    for (Int line = 1; line <= 300; ++line) current.Store(NewError(line));
    stop = true;
    for (auto& reader : readers) reader.join();
    EXPECT_EQ(current.Load().GetLocation().line, 300);
  }
  // The raised words of this thread keep their last errors; nothing else is left.
  EXPECT_LE(vorna::host::GetLiveAllocationCount() - before, 64 * 3);
}

}  // namespace
}  // namespace vorna
