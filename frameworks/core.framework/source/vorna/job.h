// Jobs: the unit of work of the host's job pool. A job object is laid out as
//   word 0  its class's table word (the C++ virtual table of JobInterface),
//   word 1  the job word: a pointer to the job's static table (JobInterfacePOD),
//   word 2  the host's word: 0 when made; the reference count of a heap job,
//   then the job's own fields.
// The host knows a job by its job word and calls the static table's functions; it
// never looks at word 0.
#pragma once

#include <atomic>
#include <new>
#include <utility>

#include "vorna/errorbase.h"
#include "vorna/system.h"

namespace vorna {

class JobInterface;

// The static table of a job class, in this order.
struct JobInterfacePOD {
  // Ends the job's life; a heap job's memory is freed by the host afterwards.
  void (*destruct)(JobInterface* job);
  // Runs the job. Gives the error object of its failure, borrowed (the host takes a
  // reference of its own at once, on the same thread), or null.
  void* (*run)(JobInterface* job);
  // Given 0 the name of the job's class, given anything else null.
  const Char* (*getName)(const JobInterface* job, Int which);
};

using JobWord = const JobInterfacePOD* const*;

class JobInterface {
 public:
  JobInterface(const JobInterface&) = delete;
  JobInterface& operator=(const JobInterface&) = delete;

  JobWord GetJobWord() const { return &_pod; }
  static JobInterface* FromJobWord(JobWord word) {
    char* address = reinterpret_cast<char*>(const_cast<const JobInterfacePOD**>(word));
    return reinterpret_cast<JobInterface*>(address - sizeof(void*));
  }

  void Destruct() { _pod->destruct(this); }
  void* Run() { return _pod->run(this); }
  const Char* GetName(Int which = 0) const { return _pod->getName(this, which); }

  // The host's word. Heap jobs only: counted by ThreadServices' AddRefJob and ReleaseJob.
  std::atomic<Int>& HostWord() { return _hostWord; }

 protected:
  explicit JobInterface(const JobInterfacePOD* pod) : _pod(pod) {}
  virtual ~JobInterface() = default;

  // The destruct entry of every job class: the virtual destructor does the rest.
  static void DestructJob(JobInterface* job) { job->~JobInterface(); }

 private:
  const JobInterfacePOD* _pod;
  std::atomic<Int> _hostWord{0};
};

// Where the allocations of heap jobs are said to come from.
inline constexpr SourceLocation JOB_LOCATION{"vorna/job", 1, 0};

// Sends a heap job that holds no reference yet to the default queue. From then on the
// job lives on the queue's reference; when it can't be queued it is freed at once.
Result<void> PrivateEnqueueHeapJob(JobInterface* job);

// A heap job that runs a lambda once on a pool thread and then frees itself. Nobody
// waits for it: what has to happen at its end is up to the lambda. The lambda's
// captures must stay valid until it has run.
template <typename FN>
class ClosureJob : public JobInterface {
 public:
  // Allocates the job from System and queues it; the out-of-memory error when there
  // is no memory for it, the queue's error when it can't be queued.
  static Result<void> Enqueue(FN&& fn) {
    static_assert(alignof(ClosureJob) <= alignof(std::max_align_t));
    void* block = System::Alloc(sizeof(ClosureJob), JOB_LOCATION);
    if (!block) return CreateError(JOB_LOCATION, 0);
    return PrivateEnqueueHeapJob(new (block) ClosureJob(std::move(fn)));
  }

 private:
  explicit ClosureJob(FN&& fn) : JobInterface(&POD), _fn(std::move(fn)) {}

  static void* RunJob(JobInterface* job) {
    static_cast<ClosureJob*>(job)->_fn();
    return nullptr;
  }
  static const Char* GetJobName(const JobInterface*, Int which) { return which == 0 ? "ClosureJob" : nullptr; }

  static constexpr JobInterfacePOD POD{&DestructJob, &RunJob, &GetJobName};
  FN _fn;
};

// Runs fn() once on a thread of the default queue; see ClosureJob.
template <typename FN>
Result<void> EnqueueClosureJob(FN fn) {
  return ClosureJob<FN>::Enqueue(std::move(fn));
}

}  // namespace vorna
