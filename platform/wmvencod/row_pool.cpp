#include "wmvencod/row_pool.h"

#include <utility>

namespace tessel::platform::wmv3 {

RowPool::RowPool(int threads) {
  for (int i = 1; i < threads; ++i) workers_.emplace_back([this] { WorkerLoop(); });
}

RowPool::~RowPool() {
  {
    std::lock_guard<std::mutex> lock(mutex_);
    stopping_ = true;
  }
  wake_.notify_all();
  for (std::thread& worker : workers_) worker.join();
}

void RowPool::Run(int rows, const std::function<void(int)>& work) {
  if (workers_.empty()) {
    for (int row = 0; row < rows; ++row) work(row);
    return;
  }
  {
    std::lock_guard<std::mutex> lock(mutex_);
    work_ = &work;
    rows_ = rows;
    next_ = 0;
    ++generation_;
  }
  wake_.notify_all();
  Drain();
  std::unique_lock<std::mutex> lock(mutex_);
  done_.wait(lock, [this] { return next_ >= rows_ && busy_ == 0; });
  work_ = nullptr;
  if (failure_) std::rethrow_exception(std::exchange(failure_, nullptr));
}

// Takes rows until none is left.
void RowPool::Drain() {
  std::unique_lock<std::mutex> lock(mutex_);
  while (next_ < rows_) {
    int row = next_++;
    ++busy_;
    const std::function<void(int)>* work = work_;
    lock.unlock();
    std::exception_ptr failure;
    try {
      (*work)(row);
    } catch (...) {
      failure = std::current_exception();
    }
    lock.lock();
    if (failure && !failure_) failure_ = failure;
    --busy_;
  }
  if (busy_ == 0) done_.notify_all();
}

void RowPool::WorkerLoop() {
  int seen = 0;
  for (;;) {
    {
      std::unique_lock<std::mutex> lock(mutex_);
      wake_.wait(lock, [&] { return stopping_ || generation_ != seen; });
      if (stopping_) return;
      seen = generation_;
    }
    Drain();
  }
}

}  // namespace tessel::platform::wmv3
