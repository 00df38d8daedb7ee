// The data types the host publishes as vorna.DataTypes:vorna.X. Types this host has no
// use of its own for are published with their size and plain copies, so that a value
// of them can still travel in a Data.
#include <cstring>
#include <new>
#include <utility>

#include "providers/host_services.h"
#include "types/reference_types.h"
#include "vorna/array.h"
#include "vorna/data.h"
#include "vorna/datadictionary.h"
#include "vorna/records.h"
#include "vorna/string.h"

namespace vorna::host {

namespace {

template <typename T>
void Construct(void* value) {
  new (value) T();
}
template <typename T>
void Destruct(void* value) {
  static_cast<T*>(value)->~T();
}
template <typename T>
void MoveInto(void* destination, void* source) {
  new (destination) T(std::move(*static_cast<T*>(source)));
}
template <typename T>
Bool CopyInto(void* destination, const void* source) {
  new (destination) T(*static_cast<const T*>(source));
  return true;
}
// A copied Data or String that came out empty from a populated source ran out of memory.
template <>
Bool CopyInto<Data>(void* destination, const void* source) {
  const Data& from = *static_cast<const Data*>(source);
  Data* to = new (destination) Data(from);
  if (from.IsPopulated() && to->IsEmpty()) {
    to->~Data();
    return false;
  }
  return true;
}

template <typename T>
DataType TypeOf(const Char* id) {
  return DataType{&Construct<T>, &Destruct<T>, &MoveInto<T>, &CopyInto<T>, Id(id), Int(sizeof(T)), nullptr, 0};
}

// A value of SIZE bytes without structure of its own.
template <Int SIZE>
struct Bytes {
  UChar bytes[SIZE] = {};
};

const DataType TYPES[] = {
    TypeOf<Bool>("vorna.DataTypes:vorna.Bool"),
    TypeOf<Char>("vorna.DataTypes:vorna.Char"),
    TypeOf<UChar>("vorna.DataTypes:vorna.UChar"),
    TypeOf<Int>("vorna.DataTypes:vorna.Int"),
    TypeOf<Int16>("vorna.DataTypes:vorna.Int16"),
    TypeOf<Int32>("vorna.DataTypes:vorna.Int32"),
    TypeOf<Int64>("vorna.DataTypes:vorna.Int64"),
    TypeOf<UInt>("vorna.DataTypes:vorna.UInt"),
    TypeOf<UInt16>("vorna.DataTypes:vorna.UInt16"),
    TypeOf<UInt32>("vorna.DataTypes:vorna.UInt32"),
    TypeOf<UInt64>("vorna.DataTypes:vorna.UInt64"),
    TypeOf<Float>("vorna.DataTypes:vorna.Float"),
    TypeOf<Float32>("vorna.DataTypes:vorna.Float32"),
    TypeOf<Float64>("vorna.DataTypes:vorna.Float64"),
    TypeOf<Utf16Char>("vorna.DataTypes:vorna.Utf16Char"),
    TypeOf<Utf32Char>("vorna.DataTypes:vorna.Utf32Char"),
    TypeOf<Id>("vorna.DataTypes:vorna.Id"),
    TypeOf<InternedId>("vorna.DataTypes:vorna.InternedId"),
    TypeOf<Data>("vorna.DataTypes:vorna.Data"),
    TypeOf<Bytes<24>>("vorna.DataTypes:vorna.ConstDataPtr"),
    TypeOf<Bytes<24>>("vorna.DataTypes:vorna.DataPtr"),
    TypeOf<Bytes<24>>("vorna.DataTypes:vorna.MoveDataPtr"),
    TypeOf<Bytes<24>>("vorna.DataTypes:vorna.ForwardingDataPtr"),
    TypeOf<Bytes<64>>("vorna.DataTypes:vorna.DelegateBase"),
    TypeOf<Bytes<8>>("vorna.DataTypes:vorna.Member"),
    TypeOf<SourceLocation>("vorna.DataTypes:vorna.SourceLocation"),
    TypeOf<Float64>("vorna.DataTypes:vorna.TimeValue"),
    TypeOf<Int64>("vorna.DataTypes:vorna.UniversalDateTime"),
    TypeOf<Int64>("vorna.DataTypes:vorna.BytesValue"),
    TypeOf<Bytes<1>>("vorna.DataTypes:vorna.UnitType"),
    TypeOf<void*>("vorna.DataTypes:vorna.ThreadRef"),
    TypeOf<void*>("vorna.DataTypes:vorna.CreateObjectRefFunc"),
    TypeOf<Bytes<16>>("vorna.DataTypes:vorna.ConversionTestSet"),
    TypeOf<Bytes<1>>("vorna.DataTypes:vorna.IDENT_VOID"),
    TypeOf<UChar>("vorna.DataTypes:vorna.BITS"),
    TypeOf<UInt16>("vorna.DataTypes:vorna.Pix16f"),
    TypeOf<Bytes<32>>("vorna.DataTypes:vorna.UpdateRegion"),
    TypeOf<Bytes<16>>("vorna.DataTypes:vorna.DrawPointInt"),
    TypeOf<Bytes<16>>("vorna.DataTypes:vorna.DrawPointFloat"),
    TypeOf<Bytes<16>>("vorna.DataTypes:vorna.DrawDimensionInt"),
    TypeOf<Bytes<16>>("vorna.DataTypes:vorna.DrawDimensionFloat"),
    TypeOf<Bytes<32>>("vorna.DataTypes:vorna.DrawRectInt"),
    TypeOf<Bytes<32>>("vorna.DataTypes:vorna.DrawRectFloat"),
    TypeOf<Bytes<16>>("vorna.DataTypes:vorna.RlaChannelInfo"),
    TypeOf<String>("vorna.DataTypes:vorna.String"),
    // The export settings travel in a stream's format as a dictionary; a compressor's
    // own state in them as an array of bytes.
    TypeOf<DataDictionary>("vorna.DataTypes:vorna.DataDictionary"),
    TypeOf<Array<Char>>("vorna.ParametricTypes:Array<vorna.Char>"),
};

}  // namespace

void PublishDataTypes() {
  for (const DataType& type : TYPES) PublishDataType(type);
}

}  // namespace vorna::host
