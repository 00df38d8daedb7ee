#include "runtime/memory.h"

#include <atomic>
#include <cstdlib>
#include <cstring>

#include "vorna_host.h"

namespace vorna::host {

namespace {

std::atomic<Int> g_failAfter{-1};
std::atomic<Bool> g_failOnce{false};
std::atomic<Int> g_refused{0};
std::atomic<Int> g_live{0};

// Absurd sizes and injected failures give null, as an exhausted heap would. A failure
// injected once switches the injection off as it happens.
Bool MayAllocate(Int size) {
  if (size < 0 || size > (Int(1) << 40)) return false;
  Int after = g_failAfter.load();
  while (after >= 0) {
    if (after == 0 && (!g_failOnce || g_failAfter.compare_exchange_weak(after, -1))) {
      ++g_refused;
      return false;
    }
    if (after > 0 && g_failAfter.compare_exchange_weak(after, after - 1)) return true;
  }
  return true;
}

}  // namespace

void* HostAlloc(Int size, const SourceLocation&) {
  if (!MayAllocate(size)) return nullptr;
  void* block = std::malloc(size_t(size ? size : 1));
  if (block) ++g_live;
  return block;
}

void* HostAllocClear(Int size, const SourceLocation& location) {
  void* block = HostAlloc(size, location);
  if (block) std::memset(block, 0, size_t(size));
  return block;
}

// The old block stays valid when this gives null.
void* HostRealloc(void* block, Int size, const SourceLocation& location) {
  if (!block) return HostAlloc(size, location);
  if (!MayAllocate(size)) return nullptr;
  return std::realloc(block, size_t(size ? size : 1));
}

void HostFree(void* block) {
  if (!block) return;
  --g_live;
  std::free(block);
}

void FailAllocationsAfter(Int after) {
  g_failOnce = false;
  g_failAfter = after;
}

void FailOneAllocationAfter(Int after) {
  g_failOnce = true;
  g_failAfter = after;
}

Int GetRefusedAllocationCount() { return g_refused.load(); }
Int GetLiveAllocationCount() { return g_live.load(); }

}  // namespace vorna::host
