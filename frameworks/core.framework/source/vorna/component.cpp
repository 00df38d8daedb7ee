#include "vorna/component.h"

#include "vorna/extensionpoint.h"

namespace vorna {

namespace {
constexpr SourceLocation CLASS_LOCATION{"vorna/component", 1, 0};
}

Result<void> ReportMissingCopyFrom(const ClassRecord& record) {
  Id id = record.id;
  DiagnosticOutputString(CRITICAL_WITH_LOCATION,
                         FormatString("Component @ has members, but CopyFrom is not implemented!", id), __LINE__,
                         __FILE__);
  DiagnosticOutput(CRITICAL_WITH_LOCATION, "Stop", __LINE__, __FILE__);
  return CreateError(CLASS_LOCATION, 4);
}

void NameClassRecord(ClassRecord& record, const Char* dottedId, const Char* componentName) {
  size_t a = std::strlen(dottedId), b = std::strlen(componentName);
  if (a + b >= sizeof(record.name)) {
    VORNA_STOP("class id too long");
    b = 0;
    a = std::min(a, sizeof(record.name) - 1);
  }
  std::memcpy(record.name, dottedId, a);
  std::memcpy(record.name + a, componentName, b);
  record.name[a + b] = 0;
  record.id = Id(static_cast<const Char*>(record.name));
}

Result<Data> BuildClass(ObjectDefinitionRecord& definition, ObjectUseRecord* baseClass, ClassRecord& component) {
  ClassHandle* cls = Class::Alloc(definition.id);
  if (!cls) return CreateError(CLASS_LOCATION, 0);
  Result<void> step;
  if (baseClass) {
    step = Class::AddBase(cls, GetPublishedClass(*baseClass));
  }
  if (!step.IsError() && Class::IsComplete(cls)) {
    Class::Release(cls);
    return Data();
  }
  if (!step.IsError()) step = Class::AddComponent(cls, &component);
  Result<ClassHandle*> finished = step.IsError() ? Result<ClassHandle*>(step.GetErrorResult()) : Class::Finish(cls);
  if (finished.IsError()) {
    Class::Release(cls);
    return finished.GetErrorResult();
  }
  Data value = MakeClassData(finished.GetValue());
  Class::Release(cls);
  if (value.IsEmpty()) return CreateError(CLASS_LOCATION, 0);
  return value;
}

Result<void> InsertClass(ObjectDefinitionRecord& definition) {
  if (definition.value.IsEmpty()) return OK;
  definition.insertedId = definition.id;
  return ExtensionPoint::Insert(ExtensionPoint::Find(Id("vorna.Classes")), definition.id, definition.value);
}

void EraseClass(ObjectDefinitionRecord& definition) {
  if (definition.insertedId.IsEmpty()) return;
  ExtensionPoint::Erase(ExtensionPoint::Find(Id("vorna.Classes")), definition.insertedId);
  definition.insertedId.Reset();
}

ClassHandle* GetDefinedClass(ObjectDefinitionRecord& definition) { return GetClassFromData(&definition.value); }

ClassHandle* GetPublishedClass(ObjectUseRecord& publishedClass) {
  static ClassHandle* const none = nullptr;
  return *static_cast<ClassHandle* const*>(LookupObjectValue(publishedClass, &none));
}

Result<ObjectRef> CreateObjectOfClass(ClassHandle* cls, const SourceLocation& location) {
  if (!cls) return RaiseError(g_NullptrErrorObject, location);
  Result<void*> object = Class::CreateObject(cls);
  if (object.IsError()) return object.GetErrorResult();
  return ObjectRef::Adopt(object.GetValue());
}

}  // namespace vorna
