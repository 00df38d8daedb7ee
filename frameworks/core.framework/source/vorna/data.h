// Data: a value of any published type in two words, the DataType and a payload. A
// value of up to one word lies in the payload; a larger one in a block from System
// whose address the payload holds. An empty Data has type null.
#pragma once

#include <new>
#include <type_traits>

#include "vorna/datatype.h"

namespace vorna {

class Data {
 public:
  constexpr Data() = default;
  Data(const Data& other) { CopyFrom(other); }
  constexpr Data(Data&& other) noexcept { MoveFrom(other); }
  Data& operator=(const Data& other) {
    if (this != &other) {
      Reset();
      CopyFrom(other);
    }
    return *this;
  }
  Data& operator=(Data&& other) noexcept {
    if (this != &other) {
      Reset();
      MoveFrom(other);
    }
    return *this;
  }
  constexpr ~Data() {
    if (!std::is_constant_evaluated()) Reset();
  }

  const DataType* GetType() const { return _type; }
  Bool IsEmpty() const { return _type == nullptr; }
  Bool IsPopulated() const { return _type != nullptr; }

  // Address of the value; null for an empty Data.
  const void* GetAddress() const {
    if (!_type) return nullptr;
    return _type->IsInline() ? static_cast<const void*>(&_payload) : reinterpret_cast<const void*>(_payload);
  }
  void* GetAddress() { return const_cast<void*>(static_cast<const Data*>(this)->GetAddress()); }

  // Makes this Data hold a default value of type; false when out of memory.
  Bool Init(const DataType* type);
  // Copies a value of type into this Data; false when out of memory.
  Bool SetValue(const DataType* type, const void* value);
  // Moves a value of type into this Data; false when out of memory.
  Bool MoveValue(const DataType* type, void* value);

  void Reset();

 private:
  void CopyFrom(const Data& other) {
    if (other._type) SetValue(other._type, other.GetAddress());
  }
  constexpr void MoveFrom(Data& other) {
    _type = other._type;
    _payload = other._payload;
    other._type = nullptr;
    other._payload = 0;
  }
  void* Reserve(const DataType* type);

  const DataType* _type = nullptr;
  UInt _payload = 0;
};

}  // namespace vorna
