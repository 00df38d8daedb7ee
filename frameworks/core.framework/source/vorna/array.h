// Array<T>: the heap object form of BaseArray, a counted block with a function table
// and the elements, held by a copy-on-write reference. Copies share the block until
// one of them writes; the function table lets code that does not know T free or copy
// a block.
#pragma once

#include <new>

#include "vorna/basearray.h"
#include "vorna/datatypes.h"
#include "vorna/refcounter.h"

namespace vorna {

inline constexpr SourceLocation ARRAY_NEW_LOCATION{"vorna/array", 1113, 0};
inline constexpr SourceLocation ARRAY_CLONE_LOCATION{"vorna/array", 1204, 0};

struct ArrayFunctions {
  void (*free)(void* block);
  void* (*clone)(const void* block);  // null when out of memory
};

template <typename T>
class Array {
 public:
  Array() = default;
  Array(const Array& other) : _block(other._block) {
    if (_block) RefCounter::AddReference(_block);
  }
  Array(Array&& other) noexcept : _block(other._block) { other._block = nullptr; }
  Array& operator=(Array other) noexcept {
    std::swap(_block, other._block);
    return *this;
  }
  ~Array() { Release(); }

  Int GetCount() const { return _block ? _block->elements.GetCount() : 0; }
  const T& operator[](Int i) const { return _block->elements[i]; }
  Block<const T> ToBlock() const {
    return _block ? Block<const T>{_block->elements.GetData(), _block->elements.GetCount()} : Block<const T>{};
  }
  Bool IsShared() const { return _block && !RefCounter::IsExclusive(_block); }

  // The elements, private to this reference; null when no block can be had.
  BaseArray<T>* MakeWritable() {
    if (!_block) {
      _block = NewBlock(ARRAY_NEW_LOCATION);
    } else if (!RefCounter::IsExclusive(_block)) {
      Storage* copy = static_cast<Storage*>(CloneBlock(_block));
      if (!copy) return nullptr;
      Release();
      _block = copy;
    }
    return _block ? &_block->elements : nullptr;
  }

 private:
  struct Storage {
    const ArrayFunctions* functions;
    BaseArray<T> elements;
  };

  static Storage* NewBlock(const SourceLocation& location) {
    void* memory = System::AllocCounted(sizeof(Storage), location);
    return memory ? new (memory) Storage{&FUNCTIONS, {}} : nullptr;
  }
  static void FreeBlock(void* block) {
    static_cast<Storage*>(block)->~Storage();
    System::FreeCounted(block);
  }
  static void* CloneBlock(const void* source) {
    Storage* block = NewBlock(ARRAY_CLONE_LOCATION);
    const auto& from = static_cast<const Storage*>(source)->elements;
    if (block && !block->elements.Append(from.GetData(), from.GetCount())) {
      FreeBlock(block);
      return nullptr;
    }
    return block;
  }
  void Release() {
    if (_block && RefCounter::RemoveReference(_block)) _block->functions->free(_block);
    _block = nullptr;
  }

  static constexpr ArrayFunctions FUNCTIONS{&FreeBlock, &CloneBlock};
  Storage* _block = nullptr;
};

// An array of bytes as a value, such as a compressor's own state in export settings.
VORNA_DECLARE_DATATYPE(Array<Char>, ArrayOfChar);

}  // namespace vorna
