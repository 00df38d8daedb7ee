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

  void Drain() {
    std::unique_lock lock(mutex_);
    if (!thread_.joinable() || std::this_thread::get_id() == thread_.get_id()) return;
    const unsigned long long ticket = posted_;
    drained_.wait(lock, [&] { return done_ >= ticket; });
  }

  void Post(std::function<void()> job) {
    std::lock_guard lock(mutex_);
    if (!thread_.joinable()) thread_ = std::thread([this] { Run(); });
    jobs_.push_back(std::move(job));
    ++posted_;
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
      job = nullptr;
      lock.lock();
      ++done_;
      drained_.notify_all();
    }
  }

  std::mutex mutex_;
  std::condition_variable wake_;
  std::condition_variable drained_;
  std::deque<std::function<void()>> jobs_;
  unsigned long long posted_ = 0;  // jobs ever queued
  unsigned long long done_ = 0;    // jobs ever finished, their captures released
  bool stopping_ = false;
  std::thread thread_;
};

WorkQueue& TheQueue() {
  static WorkQueue queue;
  return queue;
}

}  // namespace

void DrainWorkQueue() { TheQueue().Drain(); }

HRESULT PostToWorkQueue(std::function<void()> job) {
  try {
    TheQueue().Post(std::move(job));
  } catch (const std::exception&) {
    return E_OUTOFMEMORY;
  }
  return S_OK;
}

}  // namespace tessel::platform
