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

VORNA_DEFINE_OBJECT_USE(g_parametricTypesConst, "vorna.ParametricTypes:Const");
VORNA_DEFINE_OBJECT_USE(g_parametricTypesOpaque, "vorna.ParametricTypes:Opaque");
VORNA_DEFINE_OBJECT_USE(g_parametricTypesPointer, "vorna.ParametricTypes:Pointer");
VORNA_DEFINE_OBJECT_USE(g_parametricTypesLVReference, "vorna.ParametricTypes:LVReference");
VORNA_DEFINE_OBJECT_USE(g_parametricTypesRVReference, "vorna.ParametricTypes:RVReference");
VORNA_DEFINE_OBJECT_USE(g_parametricTypesUniqueReference, "vorna.ParametricTypes:UniqueReference");
VORNA_DEFINE_OBJECT_USE(g_parametricTypesACOWReference, "vorna.ParametricTypes:ACOWReference");
VORNA_DEFINE_OBJECT_USE(g_parametricTypesBlock, "vorna.ParametricTypes:Block");
VORNA_DEFINE_OBJECT_USE(g_parametricTypesStridedBlock, "vorna.ParametricTypes:StridedBlock");
VORNA_DEFINE_OBJECT_USE(g_parametricTypesResult, "vorna.ParametricTypes:Result");
VORNA_DEFINE_OBJECT_USE(g_parametricTypesBaseArray, "vorna.ParametricTypes:BaseArray");
VORNA_DEFINE_OBJECT_USE(g_parametricTypesArray, "vorna.ParametricTypes:Array");
VORNA_DEFINE_OBJECT_USE(g_parametricTypesVornaVec, "vorna.ParametricTypes:vorna.Vec");
VORNA_DEFINE_OBJECT_USE(g_parametricTypesVornaMat, "vorna.ParametricTypes:vorna.Mat");
VORNA_DEFINE_OBJECT_USE(g_parametricTypesVornaSqMat, "vorna.ParametricTypes:vorna.SqMat");

}  // namespace vorna
