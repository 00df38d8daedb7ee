#include <gtest/gtest.h>

#include <algorithm>
#include <mutex>
#include <thread>
#include <vector>

#include "host_environment.h"
#include "vorna/cpuyield.h"
#include "vorna/errorbase.h"
#include "vorna/parallelfordynamic.h"

namespace vorna {
namespace {

using tessel::testing::Console;

// Counts the job layer calls of this executable's own loops by wrapping its table
// entries. Installed and removed only while no job of this executable runs.
class JobLayerSpy {
 public:
  static inline std::atomic<int> groups{0};
  static inline std::atomic<int> threadCounts{0};
  static inline std::atomic<int> threadIndices{0};
  static inline std::atomic<int> others{0};
  static inline const Char* jobName = nullptr;
  static inline const Char* otherName = nullptr;

  JobLayerSpy() : _threads(ThreadServices::_table), _queue(JobQueueInterface::_table) {
    groups = threadCounts = threadIndices = others = 0;
    s_threads = _threads;
    s_queue = _queue;
    auto& t = ThreadServices::_table;
    t.CreateJobGroup = [](Int c, Int j, Int s) { return ++groups, s_threads.CreateJobGroup(c, j, s); };
    t.GetCurrentThreadIndex = [] { return ++threadIndices, s_threads.GetCurrentThreadIndex(); };
    t.AddJobsToGroup = [](JobGroup* g, JobWord w, void* j, Int c, Int s) {
      ++others;
      jobName = (*w)->getName(nullptr, 0);
      otherName = (*w)->getName(nullptr, 1);
      s_threads.AddJobsToGroup(g, w, j, c, s);
    };
    t.EnqueueJobGroup = [](JobGroup* g, JobQueueHandle q) { ++others, s_threads.EnqueueJobGroup(g, q); };
    t.WaitJobGroup = [](JobGroup* g, TimeValue w, Int f) { return ++others, s_threads.WaitJobGroup(g, w, f); };
    t.ReleaseJobGroup = [](JobGroup* g) { ++others, s_threads.ReleaseJobGroup(g); };
    JobQueueInterface::_table.GetThreadCount = [](JobQueueHandle q, Int l) {
      return ++threadCounts, s_queue.GetThreadCount(q, l);
    };
  }
  ~JobLayerSpy() {
    ThreadServices::_table = _threads;
    JobQueueInterface::_table = _queue;
  }

 private:
  static inline ThreadServices::Table s_threads{};
  static inline JobQueueInterface::Table s_queue{};
  ThreadServices::Table _threads;
  JobQueueInterface::Table _queue;
};

// Keeps `count` pool workers busy in closure jobs until destroyed, so that the jobs of a
// group are left to the thread that waits for it.
class BusyWorkers {
 public:
  explicit BusyWorkers(int count) : _count(count) {
    for (int i = 0; i < count; ++i) {
      EXPECT_FALSE(EnqueueClosureJob([this] {
                     ++_started;
                     SpinUntil([this] { return _release.load(); });
                     ++_ended;
                   }).IsError());
    }
    SpinUntil([this] { return _started == _count; });
  }
  ~BusyWorkers() {
    _release = true;
    SpinUntil([this] { return _ended == _count; });
  }

 private:
  const int _count;
  std::atomic<int> _started{0};
  std::atomic<int> _ended{0};
  std::atomic<bool> _release{false};
};

struct Shape {
  Int jobCount = 0;
  Int granularity = 0;
  std::vector<std::pair<Int, Int>> ranges;
};

// The shape of a loop as its first init sees it in the shared state.
Shape ShapeOf(Int from, Int to, Int threadCount) {
  Shape shape;
  std::once_flag once;
  auto init = [&](ParallelFor::DynamicLoopRange<int>& range) -> Result<void> {
    std::call_once(once, [&] {
      ParallelFor::DynamicLoopState* state = range.state;
      shape.jobCount = state->jobCount;
      shape.granularity = state->granularity;
      for (Int k = 0; k < state->jobCount; ++k)
        shape.ranges.emplace_back(state->GetRanges<int>()[k].from, state->GetRanges<int>()[k].to);
    });
    return OK;
  };
  auto body = [](Int, int&) -> Result<void> { return OK; };
  EXPECT_FALSE(ParallelFor::Dynamic<int>(from, to, init, body, [](int&) {}, threadCount).IsError());
  return shape;
}

class ParallelForTest : public ::testing::Test {
 protected:
  void SetUp() override { Console::Clear(); }
  void TearDown() override {
    g_enableParallelFor = true;
    host::FailAllocationsAfter(-1);
    host::SetJobThreadCount(0);
  }
};

TEST_F(ParallelForTest, EmptyIndexSpaceCallsNothing) {
  JobLayerSpy spy;
  int calls = 0;
  auto init = [&](ParallelFor::DynamicLoopRange<int>&) -> Result<void> { return ++calls, OK; };
  auto body = [&](Int, int&) -> Result<void> { return ++calls, OK; };
  auto finalise = [&](int&) { ++calls; };
  EXPECT_FALSE(ParallelFor::Dynamic<int>(Int(7), Int(7), init, body, finalise).IsError());
  EXPECT_FALSE(ParallelFor::Dynamic<int>(Int(9), Int(3), init, body, finalise, 8).IsError());
  EXPECT_EQ(calls, 0);
  EXPECT_EQ(spy.groups + spy.threadCounts + spy.threadIndices + spy.others, 0);
}

TEST_F(ParallelForTest, OneIndexRunsInLineWithoutGroup) {
  JobLayerSpy spy;
  std::thread::id bodyThread;
  int inits = 0, finalises = 0;
  auto init = [&](ParallelFor::DynamicLoopRange<int>&) -> Result<void> { return ++inits, OK; };
  auto body = [&](Int, int&) -> Result<void> { return bodyThread = std::this_thread::get_id(), OK; };
  EXPECT_FALSE(ParallelFor::Dynamic<int>(Int(4), Int(5), init, body, [&](int&) { ++finalises; }, 8).IsError());
  EXPECT_EQ(bodyThread, std::this_thread::get_id());
  EXPECT_EQ(inits, 1);
  EXPECT_EQ(finalises, 1);
  EXPECT_EQ(spy.groups, 0);
  EXPECT_EQ(spy.others, 0);
}

TEST_F(ParallelForTest, IndicesAreSharedOutPerJobAndFetch) {
  host::SetJobThreadCount(8);
  Shape three = ShapeOf(0, 3, 0);
  EXPECT_EQ(three.jobCount, 3);
  EXPECT_EQ(three.granularity, 1);
  EXPECT_EQ(three.ranges, (std::vector<std::pair<Int, Int>>{{0, 1}, {1, 2}, {2, 3}}));

  Shape hundred = ShapeOf(0, 100, 0);
  EXPECT_EQ(hundred.jobCount, 8);
  EXPECT_EQ(hundred.granularity, 12);
  EXPECT_EQ(hundred.ranges.front(), (std::pair<Int, Int>{0, 12}));
  EXPECT_EQ(hundred.ranges.back(), (std::pair<Int, Int>{84, 100}));

  Shape thousand = ShapeOf(0, 1000, 0);
  EXPECT_EQ(thousand.jobCount, 8);
  EXPECT_EQ(thousand.granularity, 16);
  EXPECT_EQ(thousand.ranges[3], (std::pair<Int, Int>{375, 500}));
  EXPECT_EQ(thousand.ranges.back(), (std::pair<Int, Int>{875, 1000}));

  host::SetJobThreadCount(2);
  EXPECT_EQ(ShapeOf(0, 100, 0).jobCount, 2) << "as many jobs as the queue runs";
  EXPECT_EQ(ShapeOf(0, 100, 8).jobCount, 8) << "an explicit count stands";
  EXPECT_EQ(ShapeOf(0, 100, 1).jobCount, 1);
  EXPECT_EQ(ShapeOf(Int(MAXVALUE_INT) - 100, MAXVALUE_INT, 4).granularity, 1)
      << "a cursor near the top of Int takes one index per fetch";
}

TEST_F(ParallelForTest, GroupJobsAreNamedAndTheSpyRunsThroughTheWholeLayer) {
  JobLayerSpy spy;
  EXPECT_FALSE(ParallelFor::Dynamic(Int(0), Int(64), [](Int) -> Result<void> { return OK; }, 4).IsError());
  EXPECT_EQ(spy.groups, 1);
  EXPECT_EQ(spy.threadCounts, 1);
  EXPECT_STREQ(spy.jobName, "ParallelForJob");
  EXPECT_EQ(spy.otherName, nullptr);
}

TEST_F(ParallelForTest, EveryIndexOnceUnderContention) {
  host::SetJobThreadCount(8);
  constexpr Int COUNT = 100003;
  std::vector<std::atomic<int>> done(COUNT);
  auto body = [&](Int index) -> Result<void> {
    done[size_t(index)].fetch_add(1, std::memory_order_relaxed);
    return OK;
  };
  for (Int granularity : {1, 16, 1000}) {
    for (auto& d : done) d = 0;
    ASSERT_FALSE(ParallelFor::Dynamic(Int(0), COUNT, body, 0, granularity).IsError());
    EXPECT_TRUE(std::all_of(done.begin(), done.end(), [](auto& d) { return d == 1; })) << granularity;
  }
}

// LocalData that knows whether init made it.
struct Tracked {
  int token = 0;
  std::thread::id owner;
};

TEST_F(ParallelForTest, EveryInitialisedLocalDataIsFinalisedOnceByTheLastJob) {
  host::SetJobThreadCount(8);
  for (int round = 0; round < 20; ++round) {
    std::mutex mutex;
    std::vector<int> made, finalised;
    std::vector<std::thread::id> finaliseThreads;
    int empty = 0, nextToken = 1;
    auto init = [&](ParallelFor::DynamicLoopRange<Tracked>& range) -> Result<void> {
      std::lock_guard lock(mutex);
      range.localData = {nextToken, std::this_thread::get_id()};
      made.push_back(nextToken++);
      return OK;
    };
    auto body = [](Int, Tracked& local) -> Result<void> {
      return local.owner == std::this_thread::get_id() ? OK : CreateError(VORNA_SOURCE_LOCATION, 3);
    };
    auto finalise = [&](Tracked& local) {
      std::lock_guard lock(mutex);
      finaliseThreads.push_back(std::this_thread::get_id());
      if (local.token) finalised.push_back(local.token);
      else ++empty;
    };
    ASSERT_FALSE(ParallelFor::Dynamic<Tracked>(Int(0), Int(500), init, body, finalise, 0, 2).IsError())
        << "a body only sees the LocalData of its own job";
    std::sort(finalised.begin(), finalised.end());
    EXPECT_EQ(finalised, made);
    EXPECT_EQ(made.size() + size_t(empty), 8u) << "finalise passes over every range";
    EXPECT_EQ(std::count(finaliseThreads.begin(), finaliseThreads.end(), finaliseThreads[0]), 8);
  }
}

TEST_F(ParallelForTest, JobThatStartsAfterAnotherEndedSkipsInitAndBody) {
  host::SetJobThreadCount(2);
  BusyWorkers busy(2);
  std::vector<Int> order;
  int inits = 0, emptyFinalises = 0;
  auto init = [&](ParallelFor::DynamicLoopRange<int>& range) -> Result<void> {
    ++inits;
    range.localData = 1;
    return OK;
  };
  auto body = [&](Int index, int&) -> Result<void> { return order.push_back(index), OK; };
  auto finalise = [&](int& local) { emptyFinalises += local == 0; };
  ASSERT_FALSE(ParallelFor::Dynamic<int>(Int(0), Int(10), init, body, finalise, 2).IsError());
  EXPECT_EQ(inits, 1) << "the waiter ran the first job through both ranges, then the second";
  EXPECT_EQ(emptyFinalises, 1);
  EXPECT_EQ(order, (std::vector<Int>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9}));
}

// A body that starts while the loop is cancelled already is late; a job notices the
// flag before its next index, so each job starts at most one body late.
TEST_F(ParallelForTest, FailingBodyStopsTheOthersAndItsErrorReachesTheCaller) {
  host::SetJobThreadCount(8);
  using State = ParallelFor::DynamicLoopState*;
  constexpr Int FAILING = 20000;
  std::atomic<void*> raised{nullptr};
  std::atomic<int> lateStarts{0};
  String message = String::FromLiteral("row 20000 is broken");
  auto init = [](ParallelFor::DynamicLoopRange<State>& range) -> Result<void> {
    range.localData = range.state;
    return OK;
  };
  auto body = [&](Int index, State& state) -> Result<void> {
    if (state->cancelled.load()) ++lateStarts;
    if (index != FAILING) return OK;
    ErrorResult error = RaiseError(g_IllegalArgumentErrorObject, VORNA_SOURCE_LOCATION, &message);
    raised = *error.word;
    return error;
  };
  Result<void> result = ParallelFor::Dynamic<State>(Int(0), Int(200000), init, body, [](State&) {}, 0, 1);
  ASSERT_TRUE(result.IsError());
  EXPECT_EQ(*result.GetError(), raised.load()) << "the same error object";
  EXPECT_TRUE(ErrorOf(result.GetError()).GetMessage() == message);
  EXPECT_LE(lateStarts.load(), 8);
}

TEST_F(ParallelForTest, FailingBodyInASingleJobLeavesLaterIndicesUnrun) {
  std::vector<Int> ran;
  ErrorWord raised = nullptr;
  int finalises = 0;
  auto body = [&](Int index, int&) -> Result<void> {
    ran.push_back(index);
    if (index < 3) return OK;
    raised = CreateError(VORNA_SOURCE_LOCATION, 2).word;
    return ErrorResult{raised};
  };
  auto init = [](ParallelFor::DynamicLoopRange<int>&) -> Result<void> { return OK; };
  Result<void> result = ParallelFor::Dynamic<int>(Int(0), Int(10), init, body, [&](int&) { ++finalises; }, 1);
  EXPECT_EQ(result.GetError(), raised) << "the job's own error word";
  EXPECT_EQ(ran, (std::vector<Int>{0, 1, 2, 3}));
  EXPECT_EQ(finalises, 1);
}

TEST_F(ParallelForTest, FailingInitCancelsTheLoop) {
  int bodies = 0, finalises = 0;
  auto init = [](ParallelFor::DynamicLoopRange<int>&) -> Result<void> {
    return CreateError(VORNA_SOURCE_LOCATION, 0);
  };
  auto body = [&](Int, int&) -> Result<void> { return ++bodies, OK; };
  Result<void> result = ParallelFor::Dynamic<int>(Int(0), Int(50), init, body, [&](int&) { ++finalises; }, 1);
  EXPECT_TRUE(IsErrorOfClass(result.GetError(), g_OutOfMemoryErrorObject));
  EXPECT_EQ(bodies, 0);
  EXPECT_EQ(finalises, 1);
}

// Loops that are turned off, and loops whose job group cannot be made, run as one job in line.
TEST_F(ParallelForTest, LoopsWithoutAGroupRunInOrderOnTheCaller) {
  for (bool disabled : {true, false}) {
    SCOPED_TRACE(disabled ? "loops turned off" : "no memory for the group");
    g_enableParallelFor = !disabled;
    JobLayerSpy spy;
    const std::thread::id caller = std::this_thread::get_id();
    std::vector<Int> order;
    bool elsewhere = false;
    auto body = [&](Int index) -> Result<void> {
      elsewhere |= std::this_thread::get_id() != caller;
      order.push_back(index);
      return OK;
    };
    host::FailAllocationsAfter(disabled ? -1 : 0);
    Result<void> result = ParallelFor::Dynamic(Int(10), Int(1010), body, 8);
    host::FailAllocationsAfter(-1);
    EXPECT_FALSE(result.IsError());
    EXPECT_EQ(order.size(), 1000u);
    EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
    EXPECT_FALSE(elsewhere);
    if (disabled) {
      EXPECT_EQ(spy.groups + spy.threadCounts + spy.others, 0) << "a turned-off loop does not touch the job layer";
      EXPECT_EQ(spy.threadIndices, 1);
    }
  }
}

TEST_F(ParallelForTest, RemainingBelowZeroSaysStopAndTheLoopEnds) {
  auto init = [](ParallelFor::DynamicLoopRange<int>& range) -> Result<void> {
    range.state->remaining = 1;
    return OK;
  };
  auto body = [](Int, int&) -> Result<void> { return OK; };
  EXPECT_FALSE(ParallelFor::Dynamic<int>(Int(0), Int(10), init, body, [](int&) {}, 1).IsError());
  ASSERT_EQ(Console::Lines().size(), 1u);
  EXPECT_EQ(Console::Lines()[0].rfind("CRITICAL: Stop: Someone has broken ParallelFor. [parallelfordynamic.cpp(", 0),
            0u);
}

TEST(ClosureJobTest, RunsOnAPoolThreadAndFreesItself) {
  const Int live = host::GetLiveAllocationCount();
  std::atomic<bool> ran{false};
  std::thread::id runner;
  ASSERT_FALSE(EnqueueClosureJob([&] {
                 runner = std::this_thread::get_id();
                 ran = true;
               }).IsError());
  SpinUntil([&] { return ran.load(); });
  EXPECT_NE(runner, std::this_thread::get_id());
  SpinUntil([&] { return host::GetLiveAllocationCount() == live; });
}

TEST(ClosureJobTest, NoMemoryIsTheCreatorsError) {
  bool ran = false;
  host::FailAllocationsAfter(0);
  Result<void> result = EnqueueClosureJob([&] { ran = true; });
  host::FailAllocationsAfter(-1);
  EXPECT_TRUE(IsErrorOfClass(result.GetError(), g_OutOfMemoryErrorObject));
  EXPECT_FALSE(ran);
}

TEST(CpuYieldTest, YieldsAndCountsOrSleepsAndStartsAgain) {
  Int count = 100, step = 512;
  CpuYield(count, step);
  EXPECT_EQ(count, 175);
  EXPECT_EQ(step, 512);
  count = 4000001;
  CpuYield(count, step);
  EXPECT_EQ(count, 0);
  EXPECT_EQ(step, 16);
}

TEST(CpuYieldTest, SpinUntilWaitsForAnotherThread) {
  std::atomic<bool> set{false};
  std::thread setter([&] { set = true; });
  SpinUntil([&] { return set.load(); });
  setter.join();
  EXPECT_TRUE(set);
}

}  // namespace
}  // namespace vorna
