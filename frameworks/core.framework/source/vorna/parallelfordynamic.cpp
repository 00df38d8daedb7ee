#include "vorna/translationunit.h"

#include "vorna/parallelfordynamic.h"

#include "vorna/configuration.h"

namespace vorna {

VORNA_CONFIG_BOOL(g_enableParallelFor, true, "enable parallel execution of all ParallelFor loops");

namespace ParallelFor {

namespace {
// What the loop asks the queue for: the number of jobs it may run at a time, up to this.
constexpr Int THREAD_LIMIT = 8;
}  // namespace

void ParallelForJob::ReportBrokenLoop() { VORNA_STOP("Someone has broken ParallelFor."); }

LoopShape ShapeLoop(Int total, Int threadCount, JobQueueHandle queue) {
  if (threadCount != 1) {
    Int offered = JobQueueInterface::GetThreadCount(queue, THREAD_LIMIT);
    if (offered < 1) offered = 1;
    if (threadCount == 0 || offered == 1) threadCount = offered;
  }
  UInt share = UInt(total) / UInt(threadCount);
  if (share == 0) {
    share = 1;
    threadCount = total;
  }
  return {threadCount, Int(share), 0};
}

Int FetchSize(Int to, Int jobCount, Int share, Int granularity) {
  Int size = granularity < share ? granularity : share;
  if (size < 1) size = 1;
  if (to > MAXVALUE_INT - jobCount * size) return 1;
  return size;
}

JobGroup* CreateGroup(Int jobCount, Int jobSize, Int stateSize, void*& storage) {
  JobGroup* group = ThreadServices::CreateJobGroup(jobCount, jobSize, stateSize | 3);
  if (!group) return nullptr;
  Int capacity = 0;
  storage = ThreadServices::GetJobGroupStorage(group, &capacity);
  const Bool aligned = reinterpret_cast<UInt>(storage) % RANGE_ALIGNMENT == 0;
  if (storage && aligned && capacity >= AlignUp(jobCount * jobSize, RANGE_ALIGNMENT) + stateSize) return group;
  ThreadServices::ReleaseJobGroup(group);
  return nullptr;
}

}  // namespace ParallelFor

}  // namespace vorna
