// The memory of media buffers: 64-byte aligned for the converters' vector code, and
// pooled per reader.
#include <cstdlib>

#include "mfplat/buffers.h"

namespace tessel::platform {

namespace {
constexpr size_t kAlignment = 64;
}

void* AllocateBufferMemory(size_t bytes) {
  if (bytes > kMaxBufferBytes) return nullptr;
  size_t rounded = (bytes + kAlignment - 1) / kAlignment * kAlignment;
  return std::aligned_alloc(kAlignment, rounded == 0 ? kAlignment : rounded);
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
