// DataType: the host's description of a value type, published as
// vorna.DataTypes:vorna.X. Values of up to one word lie inside a Data; larger ones in a
// block from System.
#pragma once

#include "vorna/apibase.h"
#include "vorna/id.h"
#include "vorna/resultbase.h"

namespace vorna {

struct InterfaceRecord;

struct DataType {
  // The operations, in the host's order.
  void (*construct)(void* value);
  void (*destruct)(void* value);
  void (*moveInto)(void* destination, void* source);  // destination is raw memory
  // Copies into raw memory; false when out of memory, and then nothing was constructed.
  Bool (*copyInto)(void* destination, const void* source);
  Id id;
  Int size;
  // For reference types: the interface the referenced objects have, or null for
  // any object; and how they are counted (see refclass in records.h).
  const InterfaceRecord* referenceInterface;
  UInt32 referenceClass;

  Bool IsInline() const { return size <= Int(sizeof(UInt)); }
};

}  // namespace vorna
