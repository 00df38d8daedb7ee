// BaseArray<T>: data pointer, count, capacity. While nothing is allocated the data
// pointer points at the array object itself, so it is never null; moving such an array
// re-points it. Growth on append at capacity c is (3c + 3) / 2 (one element from 0); a
// bulk insert of k grows to 3(count + k) / 2 (exactly k from empty); arrays of bytes
// round the result up to a multiple of 16; an exact reservation skips both rules. All
// growth goes through System::Realloc; a failure leaves the array as it was and the
// caller raises the out-of-memory error.
#pragma once

#include <cstring>
#include <new>
#include <type_traits>
#include <utility>

#include "vorna/system.h"

namespace vorna {

// Where every growth of an array is booked.
inline constexpr SourceLocation BASEARRAY_LOCATION{"vorna/basearray", 223, 0};

// A view of elements someone else owns.
template <typename T>
struct Block {
  T* data = nullptr;
  Int count = 0;
  T* begin() const { return data; }
  T* end() const { return data + count; }
  Int GetCount() const { return count; }
  T& operator[](Int i) const { return data[i]; }
};

// A view with a stride in bytes between elements.
template <typename T>
struct StridedBlock {
  T* data = nullptr;
  Int count = 0;
  Int stride = sizeof(T);
  T& operator[](Int i) const { return *reinterpret_cast<T*>(reinterpret_cast<char*>(data) + i * stride); }
  Int GetCount() const { return count; }
};

template <typename T>
class BaseArray {
 public:
  BaseArray() : _data(EmptyPointer()) {}
  BaseArray(const BaseArray&) = delete;
  BaseArray& operator=(const BaseArray&) = delete;
  BaseArray(BaseArray&& other) noexcept : _data(EmptyPointer()) { TakeFrom(other); }
  BaseArray& operator=(BaseArray&& other) noexcept {
    if (this != &other) {
      Reset();
      TakeFrom(other);
    }
    return *this;
  }
  ~BaseArray() { Reset(); }

  Int GetCount() const { return _count; }
  Int GetCapacity() const { return _capacity; }
  Bool IsEmpty() const { return _count == 0; }
  T* GetData() { return _data; }
  const T* GetData() const { return _data; }
  T& operator[](Int i) { return _data[i]; }
  const T& operator[](Int i) const { return _data[i]; }
  T* begin() { return _data; }
  T* end() { return _data + _count; }
  const T* begin() const { return _data; }
  const T* end() const { return _data + _count; }
  Block<T> ToBlock() { return {_data, _count}; }
  Block<const T> ToBlock() const { return {_data, _count}; }

  // Appends one element; null when out of memory.
  template <typename U>
  T* Append(U&& value) {
    if (_count == _capacity && !Grow(_capacity ? (3 * _capacity + 3) / 2 : 1)) return nullptr;
    T* slot = new (_data + _count) T(std::forward<U>(value));
    ++_count;
    return slot;
  }

  // Appends count elements copied from values; false when out of memory.
  Bool Append(const T* values, Int count) {
    if (_count + count > _capacity && !Grow(_count ? 3 * (_count + count) / 2 : count)) return false;
    for (Int i = 0; i < count; ++i) new (_data + _count + i) T(values[i]);
    _count += count;
    return true;
  }

  // Makes room for exactly capacity elements; false when out of memory.
  Bool EnsureCapacity(Int capacity) { return capacity <= _capacity || Resize(capacity); }

  // Grows or shrinks to count elements, new ones value-initialised.
  Bool SetCount(Int count) {
    if (count > _capacity && !Resize(count)) return false;
    for (Int i = _count; i < count; ++i) new (_data + i) T();
    for (Int i = count; i < _count; ++i) _data[i].~T();
    _count = count;
    return true;
  }

  void Flush() { SetCount(0); }

  void Reset() {
    for (Int i = 0; i < _count; ++i) _data[i].~T();
    if (_capacity > 0) System::Free(_data);
    _data = EmptyPointer();
    _count = 0;
    _capacity = 0;
  }

  // Gives up the elements' memory to the caller, who frees it with System::Free.
  T* Disconnect() {
    T* data = _capacity > 0 ? _data : nullptr;
    _data = EmptyPointer();
    _count = 0;
    _capacity = 0;
    return data;
  }

 private:
  T* EmptyPointer() { return reinterpret_cast<T*>(this); }

  Bool Grow(Int capacity) {
    if constexpr (sizeof(T) == 1) capacity = (capacity + 15) & ~Int(15);
    return Resize(capacity);
  }

  Bool Resize(Int capacity) {
    if (capacity < _count || capacity > MAXVALUE_INT / Int(sizeof(T))) return false;
    T* data;
    if constexpr (std::is_trivially_copyable_v<T>) {
      data = static_cast<T*>(System::Realloc(_capacity > 0 ? _data : nullptr, capacity * Int(sizeof(T)), BASEARRAY_LOCATION));
      if (!data) return false;
    } else {
      data = static_cast<T*>(System::Realloc(nullptr, capacity * Int(sizeof(T)), BASEARRAY_LOCATION));
      if (!data) return false;
      for (Int i = 0; i < _count; ++i) {
        new (data + i) T(std::move(_data[i]));
        _data[i].~T();
      }
      if (_capacity > 0) System::Free(_data);
    }
    _data = data;
    _capacity = capacity;
    return true;
  }

  void TakeFrom(BaseArray& other) {
    if (other._capacity > 0) {
      _data = other._data;
      _count = other._count;
      _capacity = other._capacity;
    }
    other._data = other.EmptyPointer();
    other._count = 0;
    other._capacity = 0;
  }

  T* _data;
  Int _count = 0;
  Int _capacity = 0;
};

}  // namespace vorna
