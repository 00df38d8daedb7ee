#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <mutex>
#include <set>
#include <thread>
#include <vector>

#include "host_environment.h"
#include "vorna/cpuyield.h"
#include "vorna/errorbase.h"
#include "vorna/formatstring.h"
#include "vorna/lockservices.h"
#include "vorna/parallelfordynamic.h"

namespace vorna {
namespace {

// A group job that counts its runs and, when asked to, fails with its number in the
// message.
class CountingJob : public JobInterface {
 public:
  CountingJob(std::atomic<int>* runs, int number, bool fails)
      : JobInterface(&POD), _runs(runs), _number(number), _fails(fails) {}

 private:
  static void* RunJob(JobInterface* job) {
    auto* self = static_cast<CountingJob*>(job);
    self->_runs->fetch_add(1);
    if (!self->_fails) return nullptr;
    String message = FormatToString("job @", Int32(self->_number));
    return *RaiseError(g_IllegalStateErrorObject, VORNA_SOURCE_LOCATION, &message).word;
  }
  static const Char* GetJobName(const JobInterface*, Int which) { return which == 0 ? "CountingJob" : nullptr; }
  static constexpr JobInterfacePOD POD{&DestructJob, &RunJob, &GetJobName};

  std::atomic<int>* _runs;
  int _number;
  bool _fails;
};

// Runs `count` counting jobs as one group; every job whose number is in `failing` fails.
Result<void> RunGroup(std::vector<std::atomic<int>>& runs, const std::vector<int>& failing) {
  const Int count = Int(runs.size());
  JobGroup* group = ThreadServices::CreateJobGroup(count, sizeof(CountingJob), 3);
  EXPECT_NE(group, nullptr);
  Int capacity = 0;
  auto* jobs = static_cast<CountingJob*>(ThreadServices::GetJobGroupStorage(group, &capacity));
  EXPECT_GE(capacity, count * Int(sizeof(CountingJob)));
  for (int k = 0; k < int(count); ++k)
    new (&jobs[k]) CountingJob(&runs[size_t(k)], k, std::find(failing.begin(), failing.end(), k) != failing.end());
  ThreadServices::AddJobsToGroup(group, jobs[0].GetJobWord(), &jobs[0], count, sizeof(CountingJob));
  ThreadServices::EnqueueJobGroup(group, JOBQUEUE_DEFAULT);
  Result<void> result = ThreadServices::WaitJobGroup(group, WAIT_INFINITE, 0);
  for (Int k = count; k-- > 0;) jobs[k].Destruct();
  ThreadServices::ReleaseJobGroup(group);
  return result;
}

class JobPoolTest : public ::testing::Test {
 protected:
  void TearDown() override { host::SetJobThreadCount(0); }
};

TEST_F(JobPoolTest, QueueReportsItsWorkersUpToTheLimit) {
  host::SetJobThreadCount(8);
  EXPECT_EQ(JobQueueInterface::GetThreadCount(JOBQUEUE_DEFAULT, 8), 8);
  EXPECT_EQ(JobQueueInterface::GetThreadCount(JOBQUEUE_DEFAULT, 3), 3);
  EXPECT_EQ(JobQueueInterface::GetThreadCount(JOBQUEUE_DEFAULT, 0), 8);
  host::SetJobThreadCount(1);
  EXPECT_EQ(JobQueueInterface::GetThreadCount(JOBQUEUE_DEFAULT, 8), 1);
}

TEST_F(JobPoolTest, GroupRunsEachJobOnceAndFreesItsMemory) {
  const Int live = host::GetLiveAllocationCount();
  for (int round = 0; round < 50; ++round) {
    std::vector<std::atomic<int>> runs(37);
    ASSERT_FALSE(RunGroup(runs, {}).IsError());
    for (auto& r : runs) ASSERT_EQ(r.load(), 1);
  }
  EXPECT_EQ(host::GetLiveAllocationCount(), live);
}

TEST_F(JobPoolTest, FailedJobsGiveTheWaiterOneOfTheirErrors) {
  std::vector<std::atomic<int>> runs(8);
  Result<void> result = RunGroup(runs, {2, 5, 7});
  ASSERT_TRUE(result.IsError());
  EXPECT_TRUE(IsErrorOfClass(result.GetError(), g_IllegalStateErrorObject));
  Result<CString> text = ErrorOf(result.GetError()).GetMessage().GetCString();
  ASSERT_FALSE(text.IsError());
  const std::string message = text.GetValue().GetCString();
  EXPECT_TRUE(message == "job 2" || message == "job 5" || message == "job 7") << message;
  for (auto& r : runs) EXPECT_EQ(r.load(), 1) << "a failure does not stop the other jobs of a group";
}

TEST_F(JobPoolTest, WaiterRunsTheJobsWhenEveryWorkerIsBusy) {
  host::SetJobThreadCount(1);
  std::atomic<int> blocker{0};  // 1 running, 2 released, 3 ended
  ASSERT_FALSE(EnqueueClosureJob([&] {
                 blocker = 1;
                 SpinUntil([&] { return blocker.load() == 2; });
                 blocker = 3;
               }).IsError());
  SpinUntil([&] { return blocker.load() == 1; });
  std::vector<std::atomic<int>> runs(5);
  EXPECT_FALSE(RunGroup(runs, {}).IsError());
  for (auto& r : runs) EXPECT_EQ(r.load(), 1);
  blocker = 2;
  SpinUntil([&] { return blocker.load() == 3; });
}

TEST_F(JobPoolTest, LoopInsideALoopBodyCannotDeadlock) {
  host::SetJobThreadCount(2);
  std::atomic<Int> sum{0};
  auto outer = [&](Int row) -> Result<void> {
    return ParallelFor::Dynamic(Int(0), Int(40), [&](Int column) -> Result<void> {
      sum += row * 40 + column;
      return OK;
    }, 0, 4);
  };
  ASSERT_FALSE(ParallelFor::Dynamic(Int(0), Int(30), outer, 0, 1).IsError());
  EXPECT_EQ(sum.load(), 1200 * 1199 / 2);
}

TEST_F(JobPoolTest, EveryThreadHasItsOwnIndex) {
  host::SetJobThreadCount(4);
  std::mutex mutex;
  std::map<std::thread::id, std::set<Int>> seen;
  ASSERT_FALSE(ParallelFor::Dynamic(Int(0), Int(4000), [&](Int) -> Result<void> {
    std::lock_guard lock(mutex);
    seen[std::this_thread::get_id()].insert(ThreadServices::GetCurrentThreadIndex());
    return OK;
  }, 0, 1).IsError());
  std::set<Int> indices;
  for (auto& [thread, own] : seen) {
    EXPECT_EQ(own.size(), 1u);
    indices.insert(*own.begin());
  }
  EXPECT_EQ(indices.size(), seen.size());
}

TEST(LockServicesTest, SynchronizedExcludesOtherThreadsAndPassesTheResultOn) {
  LockWord lock;
  Int counter = 0;
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([&] {
      for (int i = 0; i < 20000; ++i) {
        Result<void> result = LockServices::Synchronized(lock, [&]() -> Result<void> {
          ++counter;
          return OK;
        });
        ASSERT_FALSE(result.IsError());
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(counter, 80000);
  EXPECT_EQ(lock.state.load(), 0u);

  ErrorWord raised = nullptr;
  Result<void> failed = LockServices::Synchronized(lock, [&]() -> Result<void> {
    raised = CreateError(VORNA_SOURCE_LOCATION, 2).word;
    return ErrorResult{raised};
  });
  EXPECT_EQ(failed.GetError(), raised);
  EXPECT_EQ(lock.state.load(), 0u) << "released on the way out";
}

}  // namespace
}  // namespace vorna
