// vorna.LockServices#1: the host's locks. A lock is one word that is free when it holds
// 0, so it needs no set-up: zeroed memory or a default LockWord is a free lock.
#pragma once

#include <atomic>
#include <type_traits>

#include "vorna/staticinterface.h"

namespace vorna {

// A lock, free when its state is 0. Not recursive: a function that takes the lock it
// already runs under waits forever. Must outlive every Synchronized call on it.
struct LockWord {
  std::atomic<UInt32> state{0};
};

class LockServices {
 public:
  static constexpr const Char* ID = "vorna.LockServices#1";
  static constexpr Int COUNT = 9;
  using Reserved = void (*)();
  using LockedFunction = Result<void> (*)(void* context);

  struct Table {
    // Runs function(context) while holding lock, and gives its result. A waiting
    // thread sleeps; the lock is released on every way out of the function.
    Result<void> (*Synchronized)(LockWord* lock, LockedFunction function, void* context);
    Reserved reserved[8];
  };
  static constexpr UChar RETURN_CLASSES[COUNT] = {5};
  static Table _table;
  static StaticInterfaceRecord _record;

  static Result<void> Synchronized(LockWord* lock, LockedFunction function, void* context) {
    return _table.Synchronized(lock, function, context);
  }

  // The same for a lambda or function object that gives Result<void>.
  template <typename FN>
  static Result<void> Synchronized(LockWord& lock, FN&& function) {
    auto call = [](void* context) -> Result<void> { return (*static_cast<std::remove_reference_t<FN>*>(context))(); };
    return _table.Synchronized(&lock, call, &function);
  }
};

}  // namespace vorna
