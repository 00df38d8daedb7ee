#include "vorna/translationunit.h"

#include "vorna/referencedata.h"

namespace vorna {

VORNA_DEFINE_OBJECT_USE(g_strongReferenceType, "vorna.ParametricTypes:StrongReference");
VORNA_DEFINE_OBJECT_USE(g_cowReferenceType, "vorna.ParametricTypes:COWReference");
VORNA_DEFINE_OBJECT_USE(g_classReferenceType, "vorna.ParametricTypes:ClassReference");

namespace {
void Nothing(void*) {}
void MoveNothing(void*, void*) {}
Bool CopyNothing(void*, const void*) { return false; }
constinit const DataType g_unavailableType{&Nothing, &Nothing, &MoveNothing, &CopyNothing, Id(), 8, nullptr, 0};
}  // namespace

const DataType* GetDataType(ObjectUseRecord& typeRecord) {
  return static_cast<const DataType*>(LookupObjectValue(typeRecord, &g_unavailableType));
}

Data MakeObjectData(const ObjectInterface& object, ObjectUseRecord& typeRecord) {
  Data data;
  void* pointer = object.GetPointer();
  data.SetValue(GetDataType(typeRecord), &pointer);
  return data;
}

Data MakeClassData(ClassHandle* cls) {
  Data data;
  data.SetValue(GetDataType(g_classReferenceType), &cls);
  return data;
}

ClassHandle* GetClassFromData(const Data* data) {
  if (!data || data->GetType() != GetDataType(g_classReferenceType)) return nullptr;
  return *static_cast<ClassHandle* const*>(data->GetAddress());
}

}  // namespace vorna
