// vorna.ThreadServices#1: job groups, heap jobs and thread indices of the host's job
// pool. A non-virtual interface: each call is one indirect jump through the module's
// table. Unserved, CreateJobGroup gives null and GetCurrentThreadIndex 0, so a loop runs
// in line.
#pragma once


#include "vorna/job.h"
#include "vorna/jobqueue.h"
#include "vorna/staticinterface.h"
#include "vorna/timevalue.h"

namespace vorna {

// A counted group of jobs that are enqueued and waited for together. Opaque.
struct JobGroup;

// The infinite timeout of WaitJobGroup.
inline constexpr TimeValue WAIT_INFINITE{TIMEVALUE_INFINITE};

class ThreadServices {
 public:
  static constexpr const Char* ID = "vorna.ThreadServices#1";
  static constexpr Int COUNT = 39;
  using Reserved = void (*)();

  struct Table {
    // A group with one reference, memory for jobCount jobs of jobSize bytes from a
    // 64-byte boundary and, from the next 32-byte boundary behind them, for the shared
    // state. The two lowest bits of stateSize are flags (callers pass 3); they are not
    // part of the size. Null when there is no memory.
    JobGroup* (*CreateJobGroup)(Int jobCount, Int jobSize, Int stateSize);
    void (*AddRefJobGroup)(JobGroup* group);
    void (*ReleaseJobGroup)(JobGroup* group);
    // The address of the job array, and in capacity the bytes that may be used from there.
    void* (*GetJobGroupStorage)(JobGroup* group, Int* capacity);
    // Announces the group's jobs: count jobs of jobSize bytes each, the first at
    // firstJob with its job word at firstJobWord. Once per group; the jobs must
    // outlive the group's wait.
    void (*AddJobsToGroup)(JobGroup* group, JobWord firstJobWord, void* firstJob, Int count, Int jobSize);
    // Hands the jobs to the queue's threads.
    void (*EnqueueJobGroup)(JobGroup* group, JobQueueHandle queue);
    // Returns once every job of the group has ended; the waiting thread runs jobs that
    // no pool thread has taken yet. The error of a failed job, if any did (timeout in
    // seconds; flags 0).
    Result<void> (*WaitJobGroup)(JobGroup* group, TimeValue timeout, Int flags);
    // A number unique to the calling thread for the life of the process.
    Int (*GetCurrentThreadIndex)();
    // Sends a heap job to the queue, which holds a reference on it until it has run.
    Result<void> (*EnqueueJob)(JobWord job, JobQueueHandle queue);
    // The count of a heap job; the last release destructs and frees it.
    void (*AddRefJob)(JobWord job);
    void (*ReleaseJob)(JobWord job);
    Reserved reserved[28];
  };
  static constexpr UChar RETURN_CLASSES[COUNT] = {2, 0, 0, 2, 0, 0, 5, 2, 5, 0, 0};
  static Table _table;
  static StaticInterfaceRecord _record;

  static JobGroup* CreateJobGroup(Int jobCount, Int jobSize, Int stateSize) {
    return _table.CreateJobGroup(jobCount, jobSize, stateSize);
  }
  static void AddRefJobGroup(JobGroup* group) { _table.AddRefJobGroup(group); }
  static void ReleaseJobGroup(JobGroup* group) { _table.ReleaseJobGroup(group); }
  static void* GetJobGroupStorage(JobGroup* group, Int* capacity) { return _table.GetJobGroupStorage(group, capacity); }
  static void AddJobsToGroup(JobGroup* group, JobWord firstJobWord, void* firstJob, Int count, Int jobSize) {
    _table.AddJobsToGroup(group, firstJobWord, firstJob, count, jobSize);
  }
  static void EnqueueJobGroup(JobGroup* group, JobQueueHandle queue) { _table.EnqueueJobGroup(group, queue); }
  static Result<void> WaitJobGroup(JobGroup* group, TimeValue timeout, Int flags) {
    return _table.WaitJobGroup(group, timeout, flags);
  }
  static Int GetCurrentThreadIndex() { return _table.GetCurrentThreadIndex(); }
  static Result<void> EnqueueJob(JobWord job, JobQueueHandle queue) { return _table.EnqueueJob(job, queue); }
  static void AddRefJob(JobWord job) { _table.AddRefJob(job); }
  static void ReleaseJob(JobWord job) { _table.ReleaseJob(job); }
};

}  // namespace vorna
