// Copy-on-write references to host blocks.
#pragma once

#include "vorna/refcounter.h"
#include "vorna/resultbase.h"

namespace vorna {

inline constexpr SourceLocation COW_NEW_LOCATION{"vorna/baseref", 685, 0};
inline constexpr SourceLocation COW_CLONE_BLOCK_LOCATION{"vorna/baseref", 687, 0};

// A copy-on-write reference to a host block of a non-virtual interface IFACE (strings,
// dictionaries): one counted block pointer. The last reference goes to the interface's
// first method, its free operation. Before a write the block is made private: a null
// reference asks the interface for a new block (booked at line 685 of vorna/baseref), a
// shared one for a clone (line 687).
template <typename IFACE>
class COWBlockRef {
 public:
  COWBlockRef() = default;
  COWBlockRef(const COWBlockRef& other) : _block(other._block) { AddReference(); }
  COWBlockRef(COWBlockRef&& other) noexcept : _block(other._block) { other._block = nullptr; }
  COWBlockRef& operator=(const COWBlockRef& other) {
    if (this != &other) {
      other.AddReference();
      Release();
      _block = other._block;
    }
    return *this;
  }
  COWBlockRef& operator=(COWBlockRef&& other) noexcept {
    if (this != &other) {
      Release();
      _block = other._block;
      other._block = nullptr;
    }
    return *this;
  }
  ~COWBlockRef() { Release(); }

  const void* GetBlock() const { return _block; }
  Bool IsNull() const { return _block == nullptr; }
  void Reset() { Release(); }

  // Takes over one reference to a block.
  void Adopt(void* block) {
    Release();
    _block = block;
  }

 protected:
  // The block, private to this reference; null when no block can be had.
  void* MakeWritable() {
    if (!_block) {
      _block = IFACE::_table.Alloc(COW_NEW_LOCATION);
    } else if (!RefCounter::IsExclusive(_block)) {
      void* copy = IFACE::_table.Clone(_block, COW_CLONE_BLOCK_LOCATION);
      if (!copy) return nullptr;
      Release();
      _block = copy;
    }
    return _block;
  }

  void AddReference() const {
    if (_block) RefCounter::AddReference(_block);
  }
  void Release() {
    if (_block && RefCounter::RemoveReference(_block)) IFACE::_table.Free(_block);
    _block = nullptr;
  }

  void* _block = nullptr;
};

}  // namespace vorna
