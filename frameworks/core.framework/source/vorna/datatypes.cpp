#include "vorna/translationunit.h"

#include "vorna/datatypes.h"

#include <cstring>

#include "vorna/referencedata.h"
#include "vorna/string.h"
#include "vorna/timevalue.h"

namespace vorna {

VORNA_DEFINE_OBJECT_USE(g_dataTypeBool, "vorna.DataTypes:vorna.Bool");
VORNA_DEFINE_OBJECT_USE(g_dataTypeChar, "vorna.DataTypes:vorna.Char");
VORNA_DEFINE_OBJECT_USE(g_dataTypeUChar, "vorna.DataTypes:vorna.UChar");
VORNA_DEFINE_OBJECT_USE(g_dataTypeInt16, "vorna.DataTypes:vorna.Int16");
VORNA_DEFINE_OBJECT_USE(g_dataTypeUInt16, "vorna.DataTypes:vorna.UInt16");
VORNA_DEFINE_OBJECT_USE(g_dataTypeInt32, "vorna.DataTypes:vorna.Int32");
VORNA_DEFINE_OBJECT_USE(g_dataTypeUInt32, "vorna.DataTypes:vorna.UInt32");
VORNA_DEFINE_OBJECT_USE(g_dataTypeInt64, "vorna.DataTypes:vorna.Int64");
VORNA_DEFINE_OBJECT_USE(g_dataTypeUInt64, "vorna.DataTypes:vorna.UInt64");
VORNA_DEFINE_OBJECT_USE(g_dataTypeFloat32, "vorna.DataTypes:vorna.Float32");
VORNA_DEFINE_OBJECT_USE(g_dataTypeFloat64, "vorna.DataTypes:vorna.Float64");
VORNA_DEFINE_OBJECT_USE(g_dataTypeUtf16Char, "vorna.DataTypes:vorna.Utf16Char");
VORNA_DEFINE_OBJECT_USE(g_dataTypeUtf32Char, "vorna.DataTypes:vorna.Utf32Char");
VORNA_DEFINE_OBJECT_USE(g_dataTypeId, "vorna.DataTypes:vorna.Id");
VORNA_DEFINE_OBJECT_USE(g_dataTypeInternedId, "vorna.DataTypes:vorna.InternedId");
VORNA_DEFINE_OBJECT_USE(g_dataTypeData, "vorna.DataTypes:vorna.Data");
VORNA_DEFINE_OBJECT_USE(g_dataTypeSourceLocation, "vorna.DataTypes:vorna.SourceLocation");
VORNA_DEFINE_OBJECT_USE(g_dataTypeString, "vorna.DataTypes:vorna.String");
VORNA_DEFINE_OBJECT_USE(g_dataTypeTimeValue, "vorna.DataTypes:vorna.TimeValue");
VORNA_DEFINE_OBJECT_USE(g_dataTypeBytesValue, "vorna.DataTypes:vorna.BytesValue");
VORNA_DEFINE_OBJECT_USE(g_dataTypeDataType, "vorna.DataTypes:vorna.DataType");
VORNA_DEFINE_OBJECT_USE(g_dataTypeArrayOfChar, "vorna.ParametricTypes:Array<vorna.Char>");

namespace {

enum class NumberKind { NONE, SIGNED, UNSIGNED, FLOAT };

struct NumberInfo {
  NumberKind kind;
  Int size;
};

NumberInfo NumberOf(const DataType* type) {
  struct Row {
    ObjectUseRecord* record;
    NumberInfo info;
  };
  static const Row rows[] = {
      {&g_dataTypeInt16, {NumberKind::SIGNED, 2}},    {&g_dataTypeInt32, {NumberKind::SIGNED, 4}},
      {&g_dataTypeInt64, {NumberKind::SIGNED, 8}},    {&g_dataTypeUInt16, {NumberKind::UNSIGNED, 2}},
      {&g_dataTypeUInt32, {NumberKind::UNSIGNED, 4}}, {&g_dataTypeUInt64, {NumberKind::UNSIGNED, 8}},
      {&g_dataTypeFloat32, {NumberKind::FLOAT, 4}},   {&g_dataTypeFloat64, {NumberKind::FLOAT, 8}},
      {&g_dataTypeBytesValue, {NumberKind::SIGNED, 8}}};
  for (const Row& row : rows)
    if (GetDataType(*row.record) == type) return row.info;
  return {NumberKind::NONE, 0};
}

Int64 ReadSigned(const void* p, Int size) {
  switch (size) {
    case 2: return *static_cast<const Int16*>(p);
    case 4: return *static_cast<const Int32*>(p);
    default: return *static_cast<const Int64*>(p);
  }
}

UInt64 ReadUnsigned(const void* p, Int size) {
  switch (size) {
    case 2: return *static_cast<const UInt16*>(p);
    case 4: return *static_cast<const UInt32*>(p);
    default: return *static_cast<const UInt64*>(p);
  }
}

void WriteInteger(void* out, Int size, UInt64 bits) {
  switch (size) {
    case 2: *static_cast<UInt16*>(out) = UInt16(bits); break;
    case 4: *static_cast<UInt32*>(out) = UInt32(bits); break;
    default: *static_cast<UInt64*>(out) = bits; break;
  }
}

// Widening only: every value of the source fits the target.
Bool WidenNumber(NumberInfo from, const void* value, NumberInfo to, void* out) {
  if (from.kind == NumberKind::FLOAT || to.kind == NumberKind::FLOAT) {
    if (from.kind != NumberKind::FLOAT || to.kind != NumberKind::FLOAT || to.size < from.size) return false;
    *static_cast<Float64*>(out) = *static_cast<const Float32*>(value);
    return true;
  }
  Bool fits = from.kind == to.kind ? to.size >= from.size : (from.kind == NumberKind::UNSIGNED && to.size > from.size);
  if (!fits) return false;
  UInt64 bits = from.kind == NumberKind::SIGNED ? UInt64(ReadSigned(value, from.size)) : ReadUnsigned(value, from.size);
  WriteInteger(out, to.size, bits);
  return true;
}

}  // namespace

Bool ConvertDataValue(const Data& data, const DataType* wanted, void* out) {
  const DataType* type = data.GetType();
  if (!type || !wanted) return false;
  if (type == wanted) {
    wanted->destruct(out);
    if (wanted->copyInto(out, data.GetAddress())) return true;
    wanted->construct(out);
    return false;
  }
  NumberInfo from = NumberOf(type);
  NumberInfo to = NumberOf(wanted);
  return from.kind != NumberKind::NONE && to.kind != NumberKind::NONE && WidenNumber(from, data.GetAddress(), to, out);
}

VORNA_DEFINE_OBJECT_USE(g_dataTypesVornaInt, "vorna.DataTypes:vorna.Int");
VORNA_DEFINE_OBJECT_USE(g_dataTypesVornaUInt, "vorna.DataTypes:vorna.UInt");
VORNA_DEFINE_OBJECT_USE(g_dataTypesVornaFloat, "vorna.DataTypes:vorna.Float");
VORNA_DEFINE_OBJECT_USE(g_dataTypesVornaConstDataPtr, "vorna.DataTypes:vorna.ConstDataPtr");
VORNA_DEFINE_OBJECT_USE(g_dataTypesVornaDataPtr, "vorna.DataTypes:vorna.DataPtr");
VORNA_DEFINE_OBJECT_USE(g_dataTypesVornaMoveDataPtr, "vorna.DataTypes:vorna.MoveDataPtr");
VORNA_DEFINE_OBJECT_USE(g_dataTypesVornaForwardingDataPtr, "vorna.DataTypes:vorna.ForwardingDataPtr");
VORNA_DEFINE_OBJECT_USE(g_dataTypesVornaDelegateBase, "vorna.DataTypes:vorna.DelegateBase");
VORNA_DEFINE_OBJECT_USE(g_dataTypesVornaMember, "vorna.DataTypes:vorna.Member");
VORNA_DEFINE_OBJECT_USE(g_dataTypesVornaUniversalDateTime, "vorna.DataTypes:vorna.UniversalDateTime");
VORNA_DEFINE_OBJECT_USE(g_dataTypesVornaUnitType, "vorna.DataTypes:vorna.UnitType");
VORNA_DEFINE_OBJECT_USE(g_dataTypesVornaThreadRef, "vorna.DataTypes:vorna.ThreadRef");
VORNA_DEFINE_OBJECT_USE(g_dataTypesVornaCreateObjectRefFunc, "vorna.DataTypes:vorna.CreateObjectRefFunc");
VORNA_DEFINE_OBJECT_USE(g_dataTypesVornaConversionTestSet, "vorna.DataTypes:vorna.ConversionTestSet");
VORNA_DEFINE_OBJECT_USE(g_dataTypesVornaIDENTVOID, "vorna.DataTypes:vorna.IDENT_VOID");

}  // namespace vorna
