// The published DataTypes of C++ value types (vorna.DataTypes:vorna.X) and the typed
// get of a Data: a value of the same type, or of a type the wanted one accepts.
// Integers widen without loss (Int32 to Int64, UInt32 to UInt64 or Int64, ...),
// Float32 widens to Float64; anything else is an illegal state.
#pragma once

#include <type_traits>

#include "vorna/data.h"
#include "vorna/errorbase.h"
#include "vorna/objectuse.h"
#include "vorna/referencedata.h"

namespace vorna {

template <typename T>
struct DataTypeRecord;

#define VORNA_DECLARE_DATATYPE(TYPE, NAME)   \
  extern ObjectUseRecord g_dataType##NAME;   \
  template <>                                \
  struct DataTypeRecord<TYPE> {              \
    static ObjectUseRecord& Get() { return g_dataType##NAME; } \
  }

VORNA_DECLARE_DATATYPE(Bool, Bool);
VORNA_DECLARE_DATATYPE(Char, Char);
VORNA_DECLARE_DATATYPE(UChar, UChar);
VORNA_DECLARE_DATATYPE(Int16, Int16);
VORNA_DECLARE_DATATYPE(UInt16, UInt16);
VORNA_DECLARE_DATATYPE(Int32, Int32);
VORNA_DECLARE_DATATYPE(UInt32, UInt32);
VORNA_DECLARE_DATATYPE(Int64, Int64);
VORNA_DECLARE_DATATYPE(UInt64, UInt64);
VORNA_DECLARE_DATATYPE(Float32, Float32);
VORNA_DECLARE_DATATYPE(Float64, Float64);
VORNA_DECLARE_DATATYPE(Utf16Char, Utf16Char);
VORNA_DECLARE_DATATYPE(Utf32Char, Utf32Char);
VORNA_DECLARE_DATATYPE(Id, Id);
VORNA_DECLARE_DATATYPE(InternedId, InternedId);
VORNA_DECLARE_DATATYPE(Data, Data);
VORNA_DECLARE_DATATYPE(SourceLocation, SourceLocation);
VORNA_DECLARE_DATATYPE(String, String);

// A count of bytes, such as a data rate in bytes per second (vorna.DataTypes:vorna.BytesValue).
// It reads and widens as the signed 64-bit number it holds.
struct BytesValue {
  Int64 bytes = 0;
};
VORNA_DECLARE_DATATYPE(BytesValue, BytesValue);
// A data type's record as a value, such as an element of a saver's bit depths.
VORNA_DECLARE_DATATYPE(DataType, DataType);

// The published type of T; a type that holds nothing while it is not available.
template <typename T>
const DataType* DataTypeOf() {
  return GetDataType(DataTypeRecord<std::remove_cvref_t<T>>::Get());
}

// Reads a value of type T out of data by the conversion rules above.
Bool ConvertDataValue(const Data& data, const DataType* wanted, void* out);

template <typename T>
Result<T> GetDataValue(const Data& data, const SourceLocation& location = RESULTBASE_LOCATION) {
  T value{};
  if (ConvertDataValue(data, DataTypeOf<T>(), &value)) return value;
  return CreateError(location, 3);
}

template <typename T>
Data MakeData(const T& value) {
  Data data;
  data.SetValue(DataTypeOf<T>(), &value);
  return data;
}

}  // namespace vorna
