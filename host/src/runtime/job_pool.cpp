#include "runtime/job_pool.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>
#include <vector>

#include "runtime/memory.h"
#include "runtime/raised_errors.h"
#include "vorna/baseref.h"
#include "vorna/errorbase.h"

namespace vorna {

// One block: this header, then from a 64-byte boundary the jobs' memory and the shared
// state. The claim and end counters and the error are guarded by the pool's mutex.
struct JobGroup {
  std::atomic<Int> references{1};
  void* block = nullptr;
  char* storage = nullptr;
  Int capacity = 0;
  Int jobCount = 0;
  // What AddJobsToGroup announced.
  const char* firstJobWord = nullptr;
  char* firstJob = nullptr;
  Int jobSize = 0;
  Int announced = 0;
  Int claimed = 0;
  Int ended = 0;
  // In the queue, which holds a reference on the group until its last job has ended.
  Bool queued = false;
  Bool queueHoldsReference = false;
  // A reference on the error object of the first job that failed.
  void* error = nullptr;
};

namespace host {

namespace {

constexpr SourceLocation POOL_LOCATION{"host/job_pool", 1, 0};
constexpr Int STORAGE_ALIGNMENT = 64;
constexpr Int STATE_ALIGNMENT = 32;
constexpr Int MAX_JOB_BYTES = Int(1) << 32;

constexpr Int AlignUp(Int size, Int alignment) { return (size + alignment - 1) & ~(alignment - 1); }

// An entry of the queue: a group whose jobs are claimed one by one, or a heap job.
struct Work {
  JobGroup* group;
  JobWord job;
};

class JobPool {
 public:
  void Start(Int workerCount);
  void Stop();
  Int GetWorkerCount();
  void EnqueueGroup(JobGroup* group);
  Bool EnqueueJob(JobWord job);
  Result<void> Wait(JobGroup* group, TimeValue timeout);
  void WaitIdle();

 private:
  void WorkerMain();
  Int ClaimLocked(JobGroup* group);
  void RunGroupJob(JobGroup* group, Int index);
  void DropQueuedJobs();

  std::mutex _mutex;
  std::condition_variable _workQueued;
  std::condition_variable _groupEnded;
  std::condition_variable _idle;
  std::deque<Work> _queue;
  Int _busyWorkers = 0;
  std::vector<std::thread> _workers;
  Bool _running = false;
};

JobPool g_pool;
std::atomic<Int> g_nextThreadIndex{0};
thread_local Int t_threadIndex = -1;

void JobPool::Start(Int workerCount) {
  std::lock_guard lock(_mutex);
  if (_running) return;
  if (workerCount < 1) workerCount = std::max<Int>(1, Int(std::thread::hardware_concurrency()));
  _running = true;
  for (Int i = 0; i < workerCount; ++i) _workers.emplace_back([this] { WorkerMain(); });
}

void JobPool::Stop() {
  {
    std::lock_guard lock(_mutex);
    if (!_running) return;
    _running = false;
  }
  _workQueued.notify_all();
  _idle.notify_all();
  for (std::thread& worker : _workers) worker.join();
  _workers.clear();
  DropQueuedJobs();
}

void JobPool::DropQueuedJobs() {
  std::deque<Work> dropped;
  {
    std::lock_guard lock(_mutex);
    dropped.swap(_queue);
    for (Work& work : dropped)
      if (work.group) work.group->queued = false;
  }
  for (Work& work : dropped)
    if (work.job) ReleaseJob(work.job);
}

Int JobPool::GetWorkerCount() {
  std::lock_guard lock(_mutex);
  return Int(_workers.size());
}

// Once stopped the pool takes no group: its waiter runs the jobs.
void JobPool::EnqueueGroup(JobGroup* group) {
  {
    std::lock_guard lock(_mutex);
    if (!_running || group->queued || group->claimed == group->announced) return;
    group->queued = true;
    group->queueHoldsReference = true;
    group->references.fetch_add(1, std::memory_order_relaxed);
    _queue.push_back({group, nullptr});
  }
  _workQueued.notify_all();
}

Bool JobPool::EnqueueJob(JobWord job) {
  {
    std::lock_guard lock(_mutex);
    if (!_running) return false;
    AddRefJob(job);
    _queue.push_back({nullptr, job});
  }
  _workQueued.notify_one();
  return true;
}

// The next job of the group; the group leaves the queue with its last claim.
Int JobPool::ClaimLocked(JobGroup* group) {
  Int index = group->claimed++;
  if (group->claimed == group->announced && group->queued) {
    group->queued = false;
    for (auto it = _queue.begin(); it != _queue.end(); ++it) {
      if (it->group == group) {
        _queue.erase(it);
        break;
      }
    }
  }
  return index;
}

// Called without the mutex. The error object is borrowed from this thread's raised
// errors, so the group's reference is taken here before anything else can be raised.
void JobPool::RunGroupJob(JobGroup* group, Int index) {
  auto* job = reinterpret_cast<JobInterface*>(group->firstJob + index * group->jobSize);
  JobWord word = reinterpret_cast<JobWord>(group->firstJobWord + index * group->jobSize);
  void* error = (*word)->run(job);
  AddObjectReference(error);
  Bool last = false;
  Bool releaseQueueReference = false;
  {
    std::lock_guard lock(_mutex);
    if (error && !group->error) std::swap(error, group->error);
    last = ++group->ended == group->announced;
    releaseQueueReference = last && group->queueHoldsReference;
    if (last) _groupEnded.notify_all();
  }
  RemoveObjectReference(error);
  if (releaseQueueReference) ReleaseJobGroup(group);
}

void JobPool::WorkerMain() {
  GetCurrentThreadIndex();
  std::unique_lock lock(_mutex);
  for (;;) {
    _workQueued.wait(lock, [this] { return !_running || !_queue.empty(); });
    if (!_running) return;
    ++_busyWorkers;
    Work work = _queue.front();
    if (work.group) {
      Int index = ClaimLocked(work.group);
      lock.unlock();
      RunGroupJob(work.group, index);
    } else {
      _queue.pop_front();
      lock.unlock();
      (*work.job)->run(JobInterface::FromJobWord(work.job));
      ReleaseJob(work.job);
    }
    lock.lock();
    if (--_busyWorkers == 0 && _queue.empty()) _idle.notify_all();
  }
}

void JobPool::WaitIdle() {
  std::unique_lock lock(_mutex);
  _idle.wait(lock, [this] { return !_running || (_busyWorkers == 0 && _queue.empty()); });
}

// A wait whose finite timeout passes first gives an illegal-state error and leaves the
// group's jobs running: the caller keeps the group and its jobs and waits again.
Result<void> JobPool::Wait(JobGroup* group, TimeValue timeout) {
  using Clock = std::chrono::steady_clock;
  const Bool infinite = timeout.IsInfinite();
  const Clock::time_point deadline =
      infinite ? Clock::time_point::max()
               : Clock::now() + std::chrono::duration_cast<Clock::duration>(std::chrono::duration<Float64>(timeout.GetSeconds()));
  std::unique_lock lock(_mutex);
  while (group->ended < group->announced) {
    if (group->claimed < group->announced) {
      Int index = ClaimLocked(group);
      lock.unlock();
      RunGroupJob(group, index);
      lock.lock();
    } else if (infinite) {
      _groupEnded.wait(lock);
    } else if (_groupEnded.wait_until(lock, deadline) == std::cv_status::timeout &&
               group->ended < group->announced) {
      lock.unlock();
      return CreateError(POOL_LOCATION, 3);
    }
  }
  void* error = group->error;
  lock.unlock();
  if (!error) return OK;
  return ErrorResult{RaiseErrorCopy(&error)};
}

}  // namespace

void StartJobPool(Int workerCount) { g_pool.Start(workerCount); }
void StopJobPool() { g_pool.Stop(); }

void WaitForIdleJobPool() { g_pool.WaitIdle(); }

JobGroup* CreateJobGroup(Int jobCount, Int jobSize, Int stateSize) {
  const Int state = stateSize & ~Int(3);
  if (jobCount < 1 || jobSize < 1 || state < 0 || jobCount > MAX_JOB_BYTES / jobSize) return nullptr;
  const Int headerSize = AlignUp(Int(sizeof(JobGroup)), STORAGE_ALIGNMENT);
  const Int capacity = AlignUp(jobCount * jobSize, STATE_ALIGNMENT) + AlignUp(state, STATE_ALIGNMENT);
  void* block = HostAlloc(headerSize + capacity + STORAGE_ALIGNMENT - 1, POOL_LOCATION);
  if (!block) return nullptr;
  char* base = reinterpret_cast<char*>(AlignUp(reinterpret_cast<Int>(block), STORAGE_ALIGNMENT));
  auto* group = new (base) JobGroup;
  group->block = block;
  group->storage = base + headerSize;
  group->capacity = capacity;
  group->jobCount = jobCount;
  return group;
}

void AddRefJobGroup(JobGroup* group) { group->references.fetch_add(1, std::memory_order_relaxed); }

void ReleaseJobGroup(JobGroup* group) {
  if (group->references.fetch_sub(1, std::memory_order_acq_rel) != 1) return;
  RemoveObjectReference(group->error);
  void* block = group->block;
  group->~JobGroup();
  HostFree(block);
}

void* GetJobGroupStorage(JobGroup* group, Int* capacity) {
  if (capacity) *capacity = group->capacity;
  return group->storage;
}

void AddJobsToGroup(JobGroup* group, JobWord firstJobWord, void* firstJob, Int count, Int jobSize) {
  if (count > group->jobCount) count = group->jobCount;
  group->firstJobWord = reinterpret_cast<const char*>(firstJobWord);
  group->firstJob = static_cast<char*>(firstJob);
  group->jobSize = jobSize;
  group->announced = count;
}

void EnqueueJobGroup(JobGroup* group, JobQueueHandle) { g_pool.EnqueueGroup(group); }

Result<void> WaitJobGroup(JobGroup* group, TimeValue timeout, Int) { return g_pool.Wait(group, timeout); }

Result<void> EnqueueJob(JobWord job, JobQueueHandle) {
  if (g_pool.EnqueueJob(job)) return OK;
  return RaiseError(g_ShutdownErrorObject, POOL_LOCATION);
}

void AddRefJob(JobWord job) {
  JobInterface::FromJobWord(job)->HostWord().fetch_add(1, std::memory_order_relaxed);
}

// The last release ends the job's life and frees its System block.
void ReleaseJob(JobWord job) {
  JobInterface* object = JobInterface::FromJobWord(job);
  if (object->HostWord().fetch_sub(1, std::memory_order_acq_rel) != 1) return;
  (*job)->destruct(object);
  HostFree(object);
}

Int GetCurrentThreadIndex() {
  if (t_threadIndex < 0) t_threadIndex = g_nextThreadIndex.fetch_add(1, std::memory_order_relaxed);
  return t_threadIndex;
}

Int GetThreadCount(JobQueueHandle, Int limit) {
  Int count = g_pool.GetWorkerCount();
  if (limit > 0 && count > limit) count = limit;
  return count < 1 ? 1 : count;
}

}  // namespace host

}  // namespace vorna
