#include "vorna/publishedobject.h"

#include "vorna/extensionpoint.h"

namespace vorna {

Result<Data> CreatePublishedInstance(ObjectDefinitionRecord& classDefinition, const SourceLocation& location) {
  ClassHandle* cls = GetDefinedClass(classDefinition);
  if (!cls) return RaiseError(g_NullptrErrorObject, location);
  VORNA_ASSIGN_OR_RETURN(ObjectRef object, CreateObjectOfClass(cls, location));
  Data value = MakeObjectData(object);
  if (value.IsEmpty()) return CreateError(location, 0);
  return value;
}

Result<Data> PublishedClassValue(ObjectDefinitionRecord& classDefinition, const SourceLocation& location) {
  ClassHandle* cls = GetDefinedClass(classDefinition);
  if (!cls) return RaiseError(g_NullptrErrorObject, location);
  Data value = MakeClassData(cls);
  if (value.IsEmpty()) return CreateError(location, 0);
  return value;
}

Result<void> InsertRegistryMember(ObjectDefinitionRecord& definition) {
  Id registry, member;
  if (!SplitMemberId(definition.id, registry, member)) return CreateError(VORNA_SOURCE_LOCATION, 0);
  VORNA_RETURN_ON_ERROR(ExtensionPoint::Insert(ExtensionPoint::Find(registry), member, definition.value));
  definition.insertedId = definition.id;
  return OK;
}

void EraseRegistryMember(ObjectDefinitionRecord& definition) {
  Id registry, member;
  if (definition.insertedId.IsEmpty() || !SplitMemberId(definition.insertedId, registry, member)) return;
  ExtensionPoint::Erase(ExtensionPoint::Find(registry), member);
  definition.insertedId.Reset();
}

}  // namespace vorna
