// The memory of media buffers: 64-byte aligned for the converters' vector code, and
// pooled per reader. Blocks of a whole frame and more are laid on 2 MB boundaries and
// offered to the kernel's huge pages: a 1080p frame is then a handful of page faults
// on first touch instead of two thousand.
#include <sys/mman.h>

#include <cstdlib>

#include "mfplat/buffers.h"

namespace tessel::platform {

namespace {
constexpr size_t kAlignment = 64;
constexpr size_t kHugePage = size_t(2) << 20;
}

void* AllocateBufferMemory(size_t bytes) {
  if (bytes > kMaxBufferBytes) return nullptr;
  size_t alignment = bytes >= kHugePage ? kHugePage : kAlignment;
  size_t rounded = (bytes + alignment - 1) / alignment * alignment;
  void* memory = std::aligned_alloc(alignment, rounded == 0 ? alignment : rounded);
  if (memory && alignment == kHugePage) madvise(memory, rounded, MADV_HUGEPAGE);
  return memory;
}

void FreeBufferMemory(void* memory) { std::free(memory); }

BlockPool::~BlockPool() {
  for (void* block : free_) FreeBufferMemory(block);
}

void* BlockPool::Take() {
  {
    std::lock_guard lock(mutex_);
    if (!free_.empty()) {
      void* block = free_.back();
      free_.pop_back();
      return block;
    }
  }
  return AllocateBufferMemory(blockBytes_);
}

void BlockPool::Give(void* block) {
  {
    std::lock_guard lock(mutex_);
    if (free_.size() < kKeep) {
      free_.push_back(block);
      return;
    }
  }
  FreeBufferMemory(block);
}

}  // namespace tessel::platform
