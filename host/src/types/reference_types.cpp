#include "types/reference_types.h"

#include <new>

#include "loading/host_class.h"
#include "loading/registries.h"
#include "vorna/baseref.h"

namespace vorna::host {

namespace {

void* PointerAt(void* value) { return *static_cast<void**>(value); }

void ConstructNull(void* value) { *static_cast<void**>(value) = nullptr; }
void MovePointer(void* destination, void* source) {
  *static_cast<void**>(destination) = PointerAt(source);
  *static_cast<void**>(source) = nullptr;
}

void ReleaseObjectValue(void* value) { RemoveObjectReference(PointerAt(value)); }
Bool CopyObjectValue(void* destination, const void* source) {
  void* object = *static_cast<void* const*>(source);
  AddObjectReference(object);
  *static_cast<void**>(destination) = object;
  return true;
}

void ReleaseClassValue(void* value) { ReleaseClass(static_cast<ClassHandle*>(PointerAt(value))); }
Bool CopyClassValue(void* destination, const void* source) {
  auto* cls = *static_cast<ClassHandle* const*>(source);
  if (cls) cls->references.fetch_add(1);
  *static_cast<void**>(destination) = cls;
  return true;
}

void ConstructType(void* value) { new (value) DataType{}; }
void DestructType(void* value) { static_cast<DataType*>(value)->~DataType(); }
void MoveType(void* destination, void* source) { new (destination) DataType(*static_cast<DataType*>(source)); }
Bool CopyType(void* destination, const void* source) {
  new (destination) DataType(*static_cast<const DataType*>(source));
  return true;
}

const DataType g_strongReference{&ConstructNull, &ReleaseObjectValue, &MovePointer, &CopyObjectValue,
                                 Id("vorna.ParametricTypes:StrongReference"), 8, nullptr, refclass::STRONG};
const DataType g_cowReference{&ConstructNull, &ReleaseObjectValue, &MovePointer, &CopyObjectValue,
                              Id("vorna.ParametricTypes:COWReference"), 8, nullptr, refclass::COPY_ON_WRITE};
const DataType g_classReference{&ConstructNull, &ReleaseClassValue, &MovePointer, &CopyClassValue,
                                Id("vorna.ParametricTypes:ClassReference"), 8, nullptr, 0};
// The type of published DataTypes: the value is the DataType record itself.
const DataType g_typeOfTypes{&ConstructType, &DestructType, &MoveType, &CopyType,
                             Id("vorna.DataTypes:vorna.DataType"), Int(sizeof(DataType)), nullptr, 0};

}  // namespace

void PublishDataType(const DataType& type) {
  Data value;
  if (value.SetValue(&g_typeOfTypes, &type)) (void)Publish(type.id, value);
}

void PublishReferenceTypes() {
  for (const DataType* type : {&g_strongReference, &g_cowReference, &g_classReference, &g_typeOfTypes})
    PublishDataType(*type);
}

}  // namespace vorna::host
