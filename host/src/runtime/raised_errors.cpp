#include "runtime/raised_errors.h"

#include "vorna/baseref.h"
#include "vorna/errorbase.h"

namespace vorna::host {

namespace {

struct Ring {
  void* slots[RAISED_ERROR_DEPTH] = {};
  Int next = 0;

  ~Ring() {
    for (void*& slot : slots) RemoveObjectReference(slot);
  }

  ErrorWord Put(void* error) {
    void*& slot = slots[next];
    next = (next + 1) % RAISED_ERROR_DEPTH;
    RemoveObjectReference(slot);
    slot = error;
    return &slot;
  }
};

thread_local Ring t_ring;

}  // namespace

// A null reference has no object to hand out: its word is the null-pointer error's.
ErrorWord RaiseError(void** errorReference) {
  void* error = *errorReference;
  *errorReference = nullptr;
  if (!error) return PrivateGetNullReturnError(0);
  return t_ring.Put(error);
}

ErrorWord RaiseErrorCopy(void* const* errorReference) {
  void* error = *errorReference;
  if (!error) return PrivateGetNullReturnError(0);
  AddObjectReference(error);
  return t_ring.Put(error);
}

}  // namespace vorna::host
