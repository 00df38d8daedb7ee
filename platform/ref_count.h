// The reference count of a COM-style object: starts at 1 for its creator; the Release
// that brings it to 0 deletes the object.
#pragma once

#include <atomic>

#include "windows.h"

namespace tessel::platform {

class RefCount {
 public:
  ULONG Add() { return count_.fetch_add(1, std::memory_order_relaxed) + 1; }
  template <typename Object>
  ULONG Drop(Object* self) {
    ULONG left = count_.fetch_sub(1, std::memory_order_acq_rel) - 1;
    if (left == 0) delete self;
    return left;
  }

 private:
  std::atomic<ULONG> count_{1};
};

}  // namespace tessel::platform
