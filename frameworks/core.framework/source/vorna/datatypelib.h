// vorna.DataTypeLib#1: data types built from others. Of its methods this code uses the
// one that gives the type of a block (address and count) of an element type, the type
// of values such as a file format's suffixes or a saver's bit depths.
#pragma once

#include "vorna/basearray.h"
#include "vorna/datatypes.h"
#include "vorna/staticinterface.h"

namespace vorna {

class DataTypeLib {
 public:
  static constexpr const Char* ID = "vorna.DataTypeLib#1";
  static constexpr Int COUNT = 29;
  using Reserved = void (*)();
  struct Table {
    const DataType* (*GetBlockType)(const DataType* element);
    Reserved reserved[28];
  };
  static constexpr UChar RETURN_CLASSES[COUNT] = {2};
  static Table _table;
  static StaticInterfaceRecord _record;

  // The type of Block<element>, the same object for every call with one element type;
  // null when the element type is null.
  static const DataType* GetBlockType(const DataType* element) { return _table.GetBlockType(element); }
};

template <typename T>
struct BlockDataType {
  static const DataType* Get() { return DataTypeLib::GetBlockType(DataTypeOf<std::remove_const_t<T>>()); }
};

// A Data holding a block over elements that someone else owns and keeps alive.
template <typename T>
Data MakeBlockData(Block<const T> block) {
  Data data;
  data.SetValue(BlockDataType<T>::Get(), &block);
  return data;
}

// The block in data, or an empty block when data holds no block of T.
template <typename T>
Block<const T> GetBlockFromData(const Data& data) {
  if (!data.GetType() || data.GetType() != BlockDataType<T>::Get()) return {};
  return *static_cast<const Block<const T>*>(data.GetAddress());
}

}  // namespace vorna
