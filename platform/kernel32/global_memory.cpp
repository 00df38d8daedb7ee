// GlobalAlloc, GlobalLock, GlobalUnlock, GlobalFree and GlobalSize. Every handle is the
// address of its block, for moveable and fixed memory alike: nothing is ever moved. The
// platform keeps the blocks it handed out, so that a foreign or freed handle is
// refused with ERROR_INVALID_HANDLE instead of being touched.
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <unordered_map>

#include "platform_counters.h"
#include "windows.h"

namespace {

struct Block {
  SIZE_T size = 0;
  DWORD locks = 0;
};

class GlobalHeap {
 public:
  // Runs f on the block of memory, or fails with ERROR_INVALID_HANDLE.
  template <typename F>
  bool With(HGLOBAL memory, F&& f) {
    std::lock_guard lock(mutex_);
    auto found = blocks_.find(memory);
    if (found == blocks_.end()) {
      SetLastError(ERROR_INVALID_HANDLE);
      return false;
    }
    f(found->second);
    return true;
  }
  bool Add(HGLOBAL memory, SIZE_T size) {
    std::lock_guard lock(mutex_);
    try {
      blocks_.emplace(memory, Block{size, 0});
      return true;
    } catch (const std::bad_alloc&) {
      return false;
    }
  }
  bool Remove(HGLOBAL memory) {
    std::lock_guard lock(mutex_);
    return blocks_.erase(memory) == 1;
  }

 private:
  std::mutex mutex_;
  std::unordered_map<HGLOBAL, Block> blocks_;
};

GlobalHeap& Heap() {
  static GlobalHeap heap;
  return heap;
}

}  // namespace

extern "C" HGLOBAL WINAPI GlobalAlloc(UINT flags, SIZE_T bytes) {
  DWORD injected = tessel::platform::GetCounters().failNextGlobalAlloc.exchange(0);
  if (injected != 0) {
    SetLastError(injected);
    return nullptr;
  }
  void* memory = std::malloc(bytes == 0 ? 1 : bytes);
  if (!memory || !Heap().Add(memory, bytes)) {
    std::free(memory);
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return nullptr;
  }
  if (flags & GMEM_ZEROINIT) std::memset(memory, 0, bytes);
  return memory;
}

extern "C" LPVOID WINAPI GlobalLock(HGLOBAL memory) {
  return Heap().With(memory, [](Block& block) { ++block.locks; }) ? memory : nullptr;
}

extern "C" BOOL WINAPI GlobalUnlock(HGLOBAL memory) {
  BOOL stillLocked = FALSE;
  Heap().With(memory, [&](Block& block) {
    if (block.locks == 0) {
      SetLastError(ERROR_NOT_LOCKED);
      return;
    }
    stillLocked = --block.locks > 0;
    if (!stillLocked) SetLastError(ERROR_SUCCESS);
  });
  return stillLocked;
}

extern "C" HGLOBAL WINAPI GlobalFree(HGLOBAL memory) {
  if (!Heap().Remove(memory)) {
    SetLastError(ERROR_INVALID_HANDLE);
    return memory;
  }
  std::free(memory);
  return nullptr;
}

extern "C" SIZE_T WINAPI GlobalSize(HGLOBAL memory) {
  SIZE_T size = 0;
  Heap().With(memory, [&](Block& block) { size = block.size; });
  return size;
}
