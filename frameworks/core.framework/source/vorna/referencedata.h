// Object and class references inside a Data. The host publishes one DataType per
// reference kind (vorna.ParametricTypes:StrongReference, COWReference and
// ClassReference); the typed get of a reference applies the interface test.
#pragma once

#include "vorna/baseref.h"
#include "vorna/data.h"
#include "vorna/objectuse.h"

namespace vorna {

extern ObjectUseRecord g_strongReferenceType;
extern ObjectUseRecord g_cowReferenceType;
extern ObjectUseRecord g_classReferenceType;

// The published type, or a type that holds nothing while it is not available.
const DataType* GetDataType(ObjectUseRecord& typeRecord);

// A Data holding one more reference to object; empty when out of memory.
Data MakeObjectData(const ObjectInterface& object, ObjectUseRecord& typeRecord = g_strongReferenceType);

// A Data holding a class.
Data MakeClassData(ClassHandle* cls);

// The object in data if it has interface I, else a null reference.
template <typename I>
StrongRef<I> GetObjectFromData(const Data* data) {
  if (!data || !data->GetType() || !data->GetType()->referenceClass) return StrongRef<I>();
  void* object = *static_cast<void* const*>(data->GetAddress());
  return StrongRef<I>(Cast<I>(ObjectInterface(object)));
}

// The class in data, or null.
ClassHandle* GetClassFromData(const Data* data);

}  // namespace vorna
