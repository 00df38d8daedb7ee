// Back-off for spin waits. A spin wait first spins on the processor with a growing
// step, then gives its time slice away, and after long waits sleeps.
#pragma once

#include <chrono>
#include <thread>

#include "vorna/apibase.h"

namespace vorna {

// One back-off step of a long spin wait, on a count and a step that the waiter keeps:
// above 4,000,000 the thread sleeps for a millisecond and both start again (count 0,
// step 16); otherwise it yields its time slice and the count grows by 75.
inline void CpuYield(Int& count, Int& step) {
  if (count > 4000000) {
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
    count = 0;
    step = 16;
  } else {
    std::this_thread::yield();
    count += 75;
  }
}

inline void CpuPause() {
#if defined(__x86_64__) || defined(__i386__)
  __builtin_ia32_pause();
#elif defined(__aarch64__)
  __asm__ __volatile__("yield");
#endif
}

// The state of one spin wait. While the count is at most 0x40000 each pass spins
// step / 8 pauses and doubles the step (back to 16 past 2048); after that each pass
// goes through CpuYield.
class SpinWait {
 public:
  void Pass() {
    if (_count > SPIN_LIMIT) {
      CpuYield(_count, _step);
      return;
    }
    _count += _step;
    for (Int i = 0; i < _step / 8; ++i) CpuPause();
    _step = _step * 2 > 2048 ? 16 : _step * 2;
  }

 private:
  static constexpr Int SPIN_LIMIT = 0x40000;
  Int _count = 0;
  Int _step = 16;
};

// Spins until done() gives true. done is called on the waiting thread only.
template <typename FN>
void SpinUntil(FN&& done) {
  SpinWait wait;
  while (!done()) wait.Pass();
}

}  // namespace vorna
