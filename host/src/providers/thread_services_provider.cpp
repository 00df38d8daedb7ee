// vorna.ThreadServices#1 and vorna.JobQueueInterface#1 as the host serves them: the job
// pool's groups, heap jobs and thread indices, and its one queue.
#include "providers/host_services.h"
#include "providers/providers.h"
#include "runtime/job_pool.h"

namespace vorna::host {

namespace {

ThreadServices::Table MakeThreadServicesTable() {
  ThreadServices::Table table{};
  table.CreateJobGroup = &CreateJobGroup;
  table.AddRefJobGroup = &AddRefJobGroup;
  table.ReleaseJobGroup = &ReleaseJobGroup;
  table.GetJobGroupStorage = &GetJobGroupStorage;
  table.AddJobsToGroup = &AddJobsToGroup;
  table.EnqueueJobGroup = &EnqueueJobGroup;
  table.WaitJobGroup = &WaitJobGroup;
  table.GetCurrentThreadIndex = &GetCurrentThreadIndex;
  table.EnqueueJob = &EnqueueJob;
  table.AddRefJob = &AddRefJob;
  table.ReleaseJob = &ReleaseJob;
  return table;
}

JobQueueInterface::Table MakeJobQueueTable() {
  JobQueueInterface::Table table{};
  table.GetThreadCount = &GetThreadCount;
  return table;
}

const ThreadServices::Table g_threadServices = MakeThreadServicesTable();
const JobQueueInterface::Table g_jobQueue = MakeJobQueueTable();

}  // namespace

void RegisterThreadServicesProviders() {
  RegisterProvider(ThreadServices::ID, &g_threadServices, ThreadServices::COUNT);
  RegisterProvider(JobQueueInterface::ID, &g_jobQueue, JobQueueInterface::COUNT);
}

}  // namespace vorna::host
