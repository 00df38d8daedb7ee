// ParallelFor::Dynamic: a loop over the indices from..to whose jobs share the work on
// the host's job pool. The index space is cut into one range per job; each job works
// its own range in small pieces taken by an atomic add on the range's cursor, and then
// helps with the other ranges the same way, so a thread that finishes early takes over
// the rest of a slower one. All jobs and their shared state lie in one job group
// allocation; nothing is allocated per job or per index, and no lock is taken.
//
// Each job has a LocalData, built by the init lambda the first time the job runs and
// emptied by the finalise lambda when the last job of the loop ends, on whichever thread
// that is. A failing body or init sets the loop's cancelled flag; the other jobs stop
// before their next index and the loop returns the error.
//
// The loop runs as one job on the calling thread when it ends up with a single job:
// g_enableParallelFor is false, threadCount 1 was asked for, the queue runs one job at a
// time, there is one index, or the job group can't be made.
#pragma once

#include <atomic>
#include <new>
#include <type_traits>
#include <utility>

#include "vorna/diagnostics.h"
#include "vorna/threadservices.h"

namespace vorna {

// When false every ParallelFor loop runs as one job on the calling thread.
extern Bool g_enableParallelFor;

namespace ParallelFor {

inline constexpr Int RANGE_ALIGNMENT = 32;

constexpr Int AlignUp(Int size, Int alignment) { return (size + alignment - 1) & ~(alignment - 1); }

struct DynamicLoopState;

// One job's share of the index space. Any job may take indices of any range; only the
// cursor's atomic add keeps an index from being done twice.
template <typename LOCALDATA>
struct alignas(RANGE_ALIGNMENT) DynamicLoopRange {
  Int from = 0;
  Int to = 0;
  // The thread that runs the range's job, written by the job when it starts.
  Int threadIndex = 0;
  // Place of the range; the range at which its job starts to work.
  Int jobIndex = 0;
  // The last failure of the range's job, in its init or its body; 0 while all is well.
  ErrorWord error = nullptr;
  DynamicLoopState* state = nullptr;
  // The job's own data: filled by init, emptied by finalise; bodies of this job only.
  LOCALDATA localData{};
  // The next index of this range that nobody has taken.
  std::atomic<Int> cursor{0};
  const void* init = nullptr;
  const void* finalise = nullptr;
  Bool initialised = false;
};

// Shared by the jobs of one loop; the jobCount ranges lie directly behind it.
struct alignas(RANGE_ALIGNMENT) DynamicLoopState {
  // Set by a job whose init or body failed, never cleared; read before each index.
  // Relaxed: a job that reads it late merely does one index more.
  std::atomic<Bool> cancelled{false};
  // Indices not yet done.
  std::atomic<Int> remaining{0};
  Int jobCount = 0;
  // Indices taken per atomic add on a cursor.
  Int granularity = 0;
  // Jobs not yet ended.
  std::atomic<Int> activeJobs{0};

  static constexpr Int SizeFor(Int jobCount, Int rangeSize);

  template <typename LOCALDATA>
  DynamicLoopRange<LOCALDATA>* GetRanges() {
    return std::launder(reinterpret_cast<DynamicLoopRange<LOCALDATA>*>(this + 1));
  }
};

constexpr Int DynamicLoopState::SizeFor(Int jobCount, Int rangeSize) {
  return Int(sizeof(DynamicLoopState)) + jobCount * rangeSize;
}

// The common class of the loop's jobs: the shared state, the job's range and the body.
// Made in place by the loop, which owns and destructs it; not counted.
class ParallelForJob : public JobInterface {
 protected:
  ParallelForJob(const JobInterfacePOD* pod, DynamicLoopState* state, void* range, const void* body)
      : JobInterface(pod), _state(state), _range(range), _body(body) {}

  static const Char* GetJobName(const JobInterface*, Int which) { return which == 0 ? "ParallelForJob" : nullptr; }
  // Output when the count of remaining indices would go below zero.
  static void ReportBrokenLoop();

  DynamicLoopState* _state;
  void* _range;
  const void* _body;
};

// The job of one loop call site. init(range) fills range.localData and gives
// Result<void>; body(index, localData) gives Result<void>; finalise(localData) gives
// nothing and releases what init took.
template <typename LOCALDATA, typename INDEX, typename BODY, typename INIT, typename FINALISE>
class DynamicJob : public ParallelForJob {
 public:
  using Range = DynamicLoopRange<LOCALDATA>;

  DynamicJob(DynamicLoopState* state, Range* range, const BODY* body) : ParallelForJob(&POD, state, range, body) {}

  // The steps of the job, on the thread that runs it. Gives the range's error word.
  ErrorWord Work() {
    Range& own = *static_cast<Range*>(_range);
    own.threadIndex = ThreadServices::GetCurrentThreadIndex();
    if (_state->activeJobs.load(std::memory_order_acquire) == _state->jobCount) {
      if (!own.initialised) Initialise(own);
      WorkLoop(own);
    }
    ErrorWord error = own.error;
    if (_state->activeJobs.fetch_sub(1, std::memory_order_acq_rel) == 1) FinaliseAll();
    return error;
  }

 private:
  void Initialise(Range& own) {
    Result<void> result = (*static_cast<const INIT*>(own.init))(own);
    if (result.IsError()) Fail(own, result.GetError());
    own.initialised = true;
  }

  void Fail(Range& own, ErrorWord error) {
    own.error = error;
    _state->cancelled.store(true, std::memory_order_relaxed);
  }

  // Beginning with the own range, every range once, while indices remain.
  void WorkLoop(Range& own) {
    Range* ranges = _state->GetRanges<LOCALDATA>();
    const Int count = _state->jobCount;
    Int k = own.jobIndex;
    for (Int visited = 0; visited < count && _state->remaining.load(std::memory_order_relaxed) != 0; ++visited) {
      Int done = WorkRange(ranges[k], own);
      if (done != 0 && _state->remaining.fetch_sub(done, std::memory_order_relaxed) < done) ReportBrokenLoop();
      k = k + 1 == count ? 0 : k + 1;
    }
  }

  // Takes pieces of range until its cursor has passed its end; gives the number of
  // indices done. Once cancelled, each piece ends at its first index.
  Int WorkRange(Range& range, Range& own) {
    if (range.cursor.load(std::memory_order_relaxed) >= range.to) return 0;
    const Int granularity = _state->granularity;
    const BODY& body = *static_cast<const BODY*>(_body);
    Int done = 0;
    for (;;) {
      // The cursor may wrap at the top of Int (atomic adds do); the piece is computed
      // without overflow.
      const Int first = range.cursor.fetch_add(granularity, std::memory_order_relaxed);
      if (first < range.from || first >= range.to) return done;
      const Int limit = range.to - first > granularity ? first + granularity : range.to;
      for (Int index = first; index < limit && !_state->cancelled.load(std::memory_order_relaxed); ++index) {
        Result<void> result = body(INDEX(index), own.localData);
        if (result.IsError()) Fail(own, result.GetError());
        ++done;
      }
    }
  }

  // Run by the job that ends last: every range, in order, also those whose init never ran.
  void FinaliseAll() {
    Range* ranges = _state->GetRanges<LOCALDATA>();
    for (Int k = 0; k < _state->jobCount; ++k) {
      Range& range = ranges[k];
      range.initialised = false;
      (*static_cast<const FINALISE*>(range.finalise))(range.localData);
      range.localData = LOCALDATA{};
    }
  }

  static void* RunJob(JobInterface* job) {
    ErrorWord error = static_cast<DynamicJob*>(job)->Work();
    return error ? *error : nullptr;
  }

  static constexpr JobInterfacePOD POD{&DestructJob, &RunJob, &GetJobName};
};

// How a loop is cut: number of jobs, indices per range and per fetch.
struct LoopShape {
  Int jobCount;
  Int share;
  Int granularity;
};

// The job count for threadCount (0: as many as the queue runs at a time, 1: in line),
// with share = total / jobCount; never more jobs than indices. total is above 0.
LoopShape ShapeLoop(Int total, Int threadCount, JobQueueHandle queue);

// The fetch size: the smaller of share and the asked granularity (at least 1), or 1
// when a cursor running one fetch per job past to could overflow.
Int FetchSize(Int to, Int jobCount, Int share, Int granularity);

// Makes the state and the ranges in place at memory, each range share long from
// `from`, the last one up to `to`.
template <typename LOCALDATA, typename INIT, typename FINALISE>
DynamicLoopState* MakeState(void* memory, Int from, Int to, const LoopShape& shape, const INIT& init,
                            const FINALISE& finalise) {
  auto* state = new (memory) DynamicLoopState;
  state->remaining.store(to - from, std::memory_order_relaxed);
  state->jobCount = shape.jobCount;
  state->granularity = shape.granularity;
  state->activeJobs.store(shape.jobCount, std::memory_order_relaxed);
  auto* ranges = reinterpret_cast<DynamicLoopRange<LOCALDATA>*>(state + 1);
  for (Int k = 0; k < shape.jobCount; ++k) {
    auto* range = new (&ranges[k]) DynamicLoopRange<LOCALDATA>;
    range->from = from + k * shape.share;
    range->to = k + 1 == shape.jobCount ? to : range->from + shape.share;
    range->threadIndex = k;
    range->jobIndex = k;
    range->state = state;
    range->cursor.store(range->from, std::memory_order_relaxed);
    range->init = &init;
    range->finalise = &finalise;
  }
  return state;
}

template <typename LOCALDATA>
void DestroyState(DynamicLoopState* state) {
  DynamicLoopRange<LOCALDATA>* ranges = state->GetRanges<LOCALDATA>();
  for (Int k = state->jobCount; k-- > 0;) ranges[k].~DynamicLoopRange<LOCALDATA>();
  state->~DynamicLoopState();
}

// One job on the calling thread, state and job on its stack. Gives that job's error.
template <typename LOCALDATA, typename INDEX, typename BODY, typename INIT, typename FINALISE>
Result<void> RunInLine(Int from, Int to, const LoopShape& shape, const INIT& init, const BODY& body,
                       const FINALISE& finalise) {
  using Job = DynamicJob<LOCALDATA, INDEX, BODY, INIT, FINALISE>;
  alignas(RANGE_ALIGNMENT) char memory[DynamicLoopState::SizeFor(1, sizeof(DynamicLoopRange<LOCALDATA>))];
  DynamicLoopState* state = MakeState<LOCALDATA>(memory, from, to, {1, shape.share, shape.granularity}, init,
                                                 finalise);
  alignas(Job) char jobMemory[sizeof(Job)];
  Job* job = new (jobMemory) Job(state, state->GetRanges<LOCALDATA>(), &body);
  ErrorWord error = job->Work();
  job->Destruct();
  DestroyState<LOCALDATA>(state);
  return ErrorResult{error};
}

// The jobs in the group's storage, the state behind them; enqueued and waited for.
template <typename LOCALDATA, typename INDEX, typename BODY, typename INIT, typename FINALISE>
Result<void> RunInGroup(JobGroup* group, void* storage, Int from, Int to, const LoopShape& shape,
                        JobQueueHandle queue, const INIT& init, const BODY& body, const FINALISE& finalise) {
  using Job = DynamicJob<LOCALDATA, INDEX, BODY, INIT, FINALISE>;
  auto* jobs = static_cast<Job*>(storage);
  DynamicLoopState* state = MakeState<LOCALDATA>(
      static_cast<char*>(storage) + AlignUp(shape.jobCount * Int(sizeof(Job)), RANGE_ALIGNMENT), from, to, shape,
      init, finalise);
  DynamicLoopRange<LOCALDATA>* ranges = state->GetRanges<LOCALDATA>();
  for (Int k = 0; k < shape.jobCount; ++k) new (&jobs[k]) Job(state, &ranges[k], &body);
  ThreadServices::AddJobsToGroup(group, jobs[0].GetJobWord(), &jobs[0], shape.jobCount, sizeof(Job));
  ThreadServices::EnqueueJobGroup(group, queue);
  Result<void> result = ThreadServices::WaitJobGroup(group, WAIT_INFINITE, 0);
  for (Int k = shape.jobCount; k-- > 0;) jobs[k].Destruct();
  DestroyState<LOCALDATA>(state);
  return result;
}

// Memory of a group for the jobs and the state, or null (then the loop runs in line).
JobGroup* CreateGroup(Int jobCount, Int jobSize, Int stateSize, void*& storage);

// The loop over from..to (to excluded). init, body and finalise as for DynamicJob; the
// lambdas must allow any order of indices and two indices at once, and they must outlive
// the call. threadCount 0 takes as many jobs as the queue runs at a time; granularity is
// the largest number of indices taken in one fetch. Gives the error of a failed init or
// body unchanged, or success; from >= to calls nothing at all.
template <typename LOCALDATA, typename INDEX, typename INIT, typename BODY, typename FINALISE>
Result<void> Dynamic(INDEX from, INDEX to, const INIT& init, const BODY& body, const FINALISE& finalise,
                     Int threadCount = 0, Int granularity = 16, JobQueueHandle queue = JOBQUEUE_DEFAULT) {
  using Job = DynamicJob<LOCALDATA, INDEX, BODY, INIT, FINALISE>;
  using Range = DynamicLoopRange<LOCALDATA>;
  if (!g_enableParallelFor) threadCount = 1;
  if (Int(from) >= Int(to)) return OK;
  LoopShape shape = ShapeLoop(Int(to) - Int(from), threadCount, queue);
  JobGroup* group = nullptr;
  void* storage = nullptr;
  if (shape.jobCount > 1) {
    group = CreateGroup(shape.jobCount, sizeof(Job), DynamicLoopState::SizeFor(shape.jobCount, sizeof(Range)),
                        storage);
  }
  shape.granularity = FetchSize(Int(to), group ? shape.jobCount : 1, shape.share, granularity);
  if (!group) return RunInLine<LOCALDATA, INDEX>(Int(from), Int(to), shape, init, body, finalise);
  Result<void> result =
      RunInGroup<LOCALDATA, INDEX>(group, storage, Int(from), Int(to), shape, queue, init, body, finalise);
  ThreadServices::ReleaseJobGroup(group);
  return result;
}

// The LocalData of a loop that has none.
struct NoLocalData {};

// The loop without LocalData: body(index) gives Result<void>.
template <typename INDEX, typename BODY>
Result<void> Dynamic(INDEX from, INDEX to, const BODY& body, Int threadCount = 0, Int granularity = 16,
                     JobQueueHandle queue = JOBQUEUE_DEFAULT) {
  auto init = [](DynamicLoopRange<NoLocalData>&) -> Result<void> { return OK; };
  auto forward = [&body](INDEX index, NoLocalData&) -> Result<void> { return body(index); };
  auto finalise = [](NoLocalData&) {};
  return Dynamic<NoLocalData>(from, to, init, forward, finalise, threadCount, granularity, queue);
}

}  // namespace ParallelFor

}  // namespace vorna
