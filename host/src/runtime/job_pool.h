// The host's job pool: the default queue (-1, also what every other handle selects),
// served by worker threads, one per core unless a test asks for another number. Job
// groups are queued as one entry from which threads claim jobs one by one; a thread that
// waits for a group claims and runs the group's unclaimed jobs itself, so a wait inside a
// job never waits for a thread that isn't there. Heap jobs are counted and freed by the
// last release.
#pragma once

#include "vorna/threadservices.h"

namespace vorna::host {

// Starts workerCount workers (0: one per core). Safe to call when running: then nothing
// happens.
void StartJobPool(Int workerCount);
// Lets every worker finish the job it runs, joins them and drops the heap jobs still
// queued without running them. Jobs of groups still queued are left to their waiters.
void StopJobPool();
// Returns once no job runs or waits in the queue; at once when the pool is stopped.
void WaitForIdleJobPool();

// The services of vorna.ThreadServices#1 and vorna.JobQueueInterface#1; callable from
// any thread.
JobGroup* CreateJobGroup(Int jobCount, Int jobSize, Int stateSize);
void AddRefJobGroup(JobGroup* group);
void ReleaseJobGroup(JobGroup* group);
void* GetJobGroupStorage(JobGroup* group, Int* capacity);
void AddJobsToGroup(JobGroup* group, JobWord firstJobWord, void* firstJob, Int count, Int jobSize);
void EnqueueJobGroup(JobGroup* group, JobQueueHandle queue);
Result<void> WaitJobGroup(JobGroup* group, TimeValue timeout, Int flags);
Result<void> EnqueueJob(JobWord job, JobQueueHandle queue);
void AddRefJob(JobWord job);
void ReleaseJob(JobWord job);
Int GetCurrentThreadIndex();
Int GetThreadCount(JobQueueHandle queue, Int limit);

}  // namespace vorna::host
