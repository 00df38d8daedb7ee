// Typed pointers: three words, the DataType, the address of a value and a word that
// is 0. They carry a value of any published type across a call without copying it:
// ConstDataPtr to read, DataPtr to write, MoveDataPtr to take, ForwardingDataPtr for
// a value the callee may copy or take.
#pragma once

#include "vorna/datatypes.h"

namespace vorna {

struct ConstDataPtr {
  const DataType* type = nullptr;
  const void* address = nullptr;
  Int reserved = 0;

  ConstDataPtr() = default;
  ConstDataPtr(const DataType* t, const void* a) : type(t), address(a) {}
  template <typename T>
  ConstDataPtr(const T& value) : type(DataTypeOf<T>()), address(&value) {}  // NOLINT
  ConstDataPtr(const Data& data) : type(data.GetType()), address(data.GetAddress()) {}  // NOLINT

  template <typename T>
  const T* As() const {
    return type == DataTypeOf<T>() ? static_cast<const T*>(address) : nullptr;
  }
};

struct DataPtr {
  const DataType* type = nullptr;
  void* address = nullptr;
  Int reserved = 0;
  template <typename T>
  explicit DataPtr(T& value) : type(DataTypeOf<T>()), address(&value) {}
};

struct MoveDataPtr {
  const DataType* type = nullptr;
  void* address = nullptr;
  Int reserved = 0;
  template <typename T>
  explicit MoveDataPtr(T&& value) : type(DataTypeOf<T>()), address(&value) {}
};

struct ForwardingDataPtr {
  const DataType* type = nullptr;
  const void* address = nullptr;
  Int reserved = 0;

  ForwardingDataPtr() = default;
  template <typename T>
  ForwardingDataPtr(const T& value) : type(DataTypeOf<T>()), address(&value) {}  // NOLINT
  ForwardingDataPtr(const Data& data) : type(data.GetType()), address(data.GetAddress()) {}  // NOLINT

  // A Data holding a copy of the value; empty when out of memory.
  Data ToData() const {
    Data data;
    if (type) data.SetValue(type, address);
    return data;
  }
};

}  // namespace vorna
