// The reference counter in front of every counted block: one 64-bit word directly
// before the address the program sees. The low three bits are flags, the count lives
// in bits 3 and up, so one reference is 8.
#pragma once

#include <atomic>

#include "vorna/apibase.h"

namespace vorna {

class RefCounter {
 public:
  static constexpr UInt ONE = 8;

  static std::atomic<UInt>& Of(const void* block) {
    return *reinterpret_cast<std::atomic<UInt>*>(const_cast<char*>(static_cast<const char*>(block)) - sizeof(UInt));
  }

  static void Init(const void* block) { Of(block).store(ONE, std::memory_order_relaxed); }

  static void AddReference(const void* block) { Of(block).fetch_add(ONE); }

  // Drops one reference; true when it was the last, so the caller releases the block.
  static Bool RemoveReference(const void* block) { return Of(block).fetch_sub(ONE) < 2 * ONE; }

  static Bool IsExclusive(const void* block) { return (Of(block).load() >> 3) == 1; }

  static UInt GetCount(const void* block) { return Of(block).load() >> 3; }
};

}  // namespace vorna
