#include "loading/root_methods.h"

#include <functional>

#include "vorna/string.h"

namespace vorna::host {

namespace {

String ToString(void* object, const FormatStatement*) {
  String text;
  const Id& id = MethodTableOf(object)->cls->id;
  (void)text.SetCString(id.GetCString(), id.GetLength());
  return text;
}
Result<void> InitObject(void*) { return OK; }
Bool IsEqual(void* object, const ObjectInterface& other) { return object == other.GetPointer(); }
Int Compare(void* object, const ObjectInterface& other) {
  return std::less<void*>()(object, other.GetPointer()) ? -1 : object == other.GetPointer() ? 0 : 1;
}
UInt GetHashCode(void* object) { return std::hash<void*>()(object); }
void* PrivateGetAdapter(void*) { return nullptr; }

void Set(MethodPair* pairs, Int slot, void* function) { pairs[slot] = {function, 0}; }

}  // namespace

Bool AddRootMethods(ClassHandle* cls) {
  const InterfaceInfo* info = ResolveInterface(&ObjectInterface::_record);
  if (!info || !AddInterface(cls, info)) return false;
  auto* pairs = reinterpret_cast<MethodPair*>(reinterpret_cast<char*>(cls->table) + info->offset + STRETCH_HEAD);
  Set(pairs, ObjectInterface::kToString, reinterpret_cast<void*>(&ToString));
  Set(pairs, ObjectInterface::kInitObject, reinterpret_cast<void*>(&InitObject));
  Set(pairs, ObjectInterface::kIsEqual, reinterpret_cast<void*>(&IsEqual));
  Set(pairs, ObjectInterface::kCompare, reinterpret_cast<void*>(&Compare));
  Set(pairs, ObjectInterface::kGetHashCode, reinterpret_cast<void*>(&GetHashCode));
  Set(pairs, ObjectInterface::kPrivateGetAdapter, reinterpret_cast<void*>(&PrivateGetAdapter));
  return true;
}

}  // namespace vorna::host
