// A small pool of threads that runs one function over a range of rows; the calling
// thread works too. Run returns when the rows are done and rethrows the first exception
// a row threw. Used from one thread at a time.
#pragma once

#include <condition_variable>
#include <exception>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace tessel::platform::wmv3 {

class RowPool {
 public:
  // threads: the number of threads that work, the caller's included (at least 1).
  explicit RowPool(int threads);
  ~RowPool();
  RowPool(const RowPool&) = delete;
  RowPool& operator=(const RowPool&) = delete;

  int Threads() const { return static_cast<int>(workers_.size()) + 1; }
  void Run(int rows, const std::function<void(int row)>& work);

 private:
  void WorkerLoop();
  void Drain();

  std::vector<std::thread> workers_;
  std::mutex mutex_;
  std::condition_variable wake_;
  std::condition_variable done_;
  const std::function<void(int)>* work_ = nullptr;  // owned by the caller of Run
  int rows_ = 0;
  int next_ = 0;
  int busy_ = 0;
  int generation_ = 0;
  std::exception_ptr failure_;
  bool stopping_ = false;
};

}  // namespace tessel::platform::wmv3
