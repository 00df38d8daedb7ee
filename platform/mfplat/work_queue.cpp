// The work-queue thread and its job list.
#include "mfplat/work_queue.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

namespace tessel::platform {

namespace {

class WorkQueue {
 public:
  ~WorkQueue() {
    {
      std::lock_guard lock(mutex_);
      stopping_ = true;
    }
    wake_.notify_all();
    if (thread_.joinable()) thread_.join();
  }

  void Post(std::function<void()> job) {
    std::lock_guard lock(mutex_);
    if (!thread_.joinable()) thread_ = std::thread([this] { Run(); });
    jobs_.push_back(std::move(job));
    wake_.notify_one();
  }

 private:
  // Runs jobs until the queue is empty and the process ends.
  void Run() {
    std::unique_lock lock(mutex_);
    for (;;) {
      wake_.wait(lock, [this] { return stopping_ || !jobs_.empty(); });
      if (jobs_.empty()) return;
      std::function<void()> job = std::move(jobs_.front());
      jobs_.pop_front();
      lock.unlock();
      job();
      lock.lock();
    }
  }

  std::mutex mutex_;
  std::condition_variable wake_;
  std::deque<std::function<void()>> jobs_;
  bool stopping_ = false;
  std::thread thread_;
};

WorkQueue& TheQueue() {
  static WorkQueue queue;
  return queue;
}

}  // namespace

HRESULT PostToWorkQueue(std::function<void()> job) {
  try {
    TheQueue().Post(std::move(job));
  } catch (const std::exception&) {
    return E_OUTOFMEMORY;
  }
  return S_OK;
}

}  // namespace tessel::platform
