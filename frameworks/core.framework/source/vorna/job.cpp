#include "vorna/translationunit.h"

#include "vorna/job.h"

#include "vorna/threadservices.h"

namespace vorna {

// The creator's reference covers the enqueue; the second one stands for the creating
// code knowing of the job. Both are dropped here, so the queue's reference is the
// only one left.
Result<void> PrivateEnqueueHeapJob(JobInterface* job) {
  JobWord word = job->GetJobWord();
  ThreadServices::AddRefJob(word);
  Result<void> queued = ThreadServices::EnqueueJob(word, JOBQUEUE_DEFAULT);
  ThreadServices::AddRefJob(word);
  ThreadServices::ReleaseJob(word);
  ThreadServices::ReleaseJob(word);
  return queued;
}

}  // namespace vorna
