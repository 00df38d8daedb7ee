// vorna.ClassInterface#1 as the host serves it: building classes, making, copying and
// freeing their objects.
#include <cstdlib>
#include <cstring>

#include "loading/host_class.h"
#include "loading/root_methods.h"
#include "providers/host_services.h"
#include "providers/providers.h"
#include "vorna/classinterface.h"
#include "vorna/errorbase.h"
#include "vorna/refcounter.h"

namespace vorna::host {

namespace {

constexpr SourceLocation CLASS_LOCATION{"host/class", 1, 0};

Bool GrowTable(ClassHandle* cls, Int size) {
  Int old = cls->table ? cls->table->size : 0;
  if (size <= old) return true;
  auto* table = static_cast<MethodTableHeader*>(std::realloc(cls->table, size_t(size)));
  if (!table) return false;
  std::memset(reinterpret_cast<char*>(table) + old, 0, size_t(size - old));
  table->size = size;
  cls->table = table;
  return true;
}

void FreeObject(void* object);

void AddBase(Result<void>& out, ClassHandle* cls, ClassHandle* base) {
  if (!base || !base->finished) {
    out = RaiseError(g_IllegalArgumentErrorObject, CLASS_LOCATION);
    return;
  }
  if (!GrowTable(cls, base->table->size)) {
    out = CreateError(CLASS_LOCATION, 0);
    return;
  }
  std::memcpy(cls->table, base->table, size_t(base->table->size));
  cls->interfaces = base->interfaces;
  cls->components = base->components;
  cls->objectSize = base->objectSize;
  base->references.fetch_add(1);
  cls->base = base;
}

Bool IsComplete(ClassHandle* cls) { return cls->finished; }

Bool AddComponentInterfaces(ClassHandle* cls, ClassRecord* component) {
  for (Int i = 0; i < component->interfaceCount; ++i) {
    const InterfaceInfo* info = ResolveInterface(const_cast<InterfaceRecord*>(component->interfaces[i]));
    if (!info || !AddInterface(cls, info)) return false;
  }
  return true;
}

void AddComponent(Result<void>& out, ClassHandle* cls, ClassRecord* component) {
  if (!AddComponentInterfaces(cls, component)) {
    out = RaiseError(g_IllegalStateErrorObject, CLASS_LOCATION);
    return;
  }
  Int offset = (cls->objectSize + 7) & ~Int(7);
  void* super = std::malloc(size_t(cls->table->size));
  if (!super) {
    out = CreateError(CLASS_LOCATION, 0);
    return;
  }
  std::memcpy(super, cls->table, size_t(cls->table->size));
  std::free(const_cast<void*>(component->superTable));
  component->superTable = super;
  component->tableSize = cls->table->size;
  component->componentOffset = offset;
  cls->components.push_back({component, offset});
  cls->objectSize = offset + component->size;
  if (!component->initMethods(cls, component)) out = RaiseError(g_IllegalStateErrorObject, CLASS_LOCATION);
}

void Finish(Result<ClassHandle*>& out, ClassHandle* cls) {
  cls->table->freeObject = &FreeObject;
  cls->table->cls = cls;
  cls->finished = true;
  out = cls;
}

void* GetMethods(ClassHandle* cls, Int interfaceOffset, Int stretchSize) {
  if (!cls->table || interfaceOffset <= 0 || interfaceOffset + stretchSize > cls->table->size) return nullptr;
  char* stretch = reinterpret_cast<char*>(cls->table) + interfaceOffset;
  return *stretch ? stretch : nullptr;
}

// Frees the components of a half-made object from part `count` backwards.
void DestructParts(ClassHandle* cls, char* object, size_t count) {
  while (count-- > 0) {
    const ClassHandle::Part& part = cls->components[count];
    part.record->destruct(object + part.offset);
  }
}

void FreeMemory(char* object) { System::Free(object - sizeof(UInt)); }

// Without memory for the object the out-of-memory class's shared word is the answer:
// raising a fresh error would need an object as well.
Result<void*> NewObject(ClassHandle* cls) {
  char* block = static_cast<char*>(System::AllocClear(cls->objectSize + Int(sizeof(UInt)), CLASS_LOCATION));
  if (!block) return ErrorResult{StaticErrorWord(g_OutOfMemoryErrorObject)};
  char* object = block + sizeof(UInt);
  RefCounter::Init(object);
  *reinterpret_cast<MethodTableHeader**>(object) = cls->table;
  for (const auto& part : cls->components) part.record->construct(object + part.offset);
  return static_cast<void*>(object);
}

void CreateObject(Result<void*>& out, ClassHandle* cls) {
  Result<void*> made = NewObject(cls);
  if (made.IsError()) {
    out = made;
    return;
  }
  char* object = static_cast<char*>(made.GetValue());
  for (size_t i = 0; i < cls->components.size(); ++i) {
    const auto& part = cls->components[i];
    Result<void> init = part.record->init(object + part.offset);
    if (init.IsError()) {
      DestructParts(cls, object, cls->components.size());
      FreeMemory(object);
      out = init.GetErrorResult();
      return;
    }
  }
  cls->references.fetch_add(1);
  out = made;
}

void FreeObject(void* pointer) {
  char* object = static_cast<char*>(pointer);
  ClassHandle* cls = MethodTableOf(object)->cls;
  for (size_t i = cls->components.size(); i-- > 0;) {
    const auto& part = cls->components[i];
    part.record->free(object + part.offset);
  }
  DestructParts(cls, object, cls->components.size());
  FreeMemory(object);
  ReleaseClass(cls);
}

void CloneObject(Result<void*>& out, const void* source, const SourceLocation&) {
  ClassHandle* cls = MethodTableOf(source)->cls;
  Result<void*> made = NewObject(cls);
  if (made.IsError()) {
    out = made;
    return;
  }
  char* object = static_cast<char*>(made.GetValue());
  cls->references.fetch_add(1);
  for (const auto& part : cls->components) {
    Result<void> copied = part.record->copyFrom(object + part.offset, static_cast<const char*>(source) + part.offset);
    if (copied.IsError()) {
      FreeObject(object);
      out = copied.GetErrorResult();
      return;
    }
  }
  out = made;
}

Int GetComponentOffset(const ClassHandle* cls, const ClassRecord* component) {
  for (const auto& part : cls->components)
    if (part.record == component) return part.offset;
  return -1;
}

const Id* GetId(const ClassHandle* cls) { return &cls->id; }

Class::Table MakeTable() {
  Class::Table table{};
  table.Alloc = [](const Id& id, Int) { return AllocClass(id); };
  table.AddBase = &AddBase;
  table.IsComplete = &IsComplete;
  table.AddComponent = &AddComponent;
  table.Finish = &Finish;
  table.GetMethods = &GetMethods;
  table.CreateObject = &CreateObject;
  table.CloneObject = &CloneObject;
  table.Release = &ReleaseClass;
  table.GetComponentOffset = &GetComponentOffset;
  table.GetId = &GetId;
  return table;
}

const Class::Table g_table = MakeTable();

}  // namespace

ClassHandle* AllocClass(const Id& id) {
  auto* cls = new (std::nothrow) ClassHandle();
  if (!cls) return nullptr;
  cls->id = id;
  if (!GrowTable(cls, METHOD_TABLE_HEADER) || !AddRootMethods(cls)) {
    ReleaseClass(cls);
    return nullptr;
  }
  return cls;
}

void ReleaseClass(ClassHandle* cls) {
  if (!cls || cls->references.fetch_sub(1) != 1) return;
  size_t inherited = cls->base ? cls->base->components.size() : 0;
  for (size_t i = inherited; i < cls->components.size(); ++i) {
    std::free(const_cast<void*>(cls->components[i].record->superTable));
    cls->components[i].record->superTable = nullptr;
  }
  ReleaseClass(cls->base);
  std::free(cls->table);
  delete cls;
}

Bool AddInterface(ClassHandle* cls, const InterfaceInfo* info) {
  for (const InterfaceInfo* present : cls->interfaces)
    if (present == info) return true;
  for (const InterfaceInfo* base : info->bases)
    if (!AddInterface(cls, base)) return false;
  if (!GrowTable(cls, (info->offset + info->size + 7) & ~Int(7))) return false;
  *(reinterpret_cast<UChar*>(cls->table) + info->offset) = 1;
  cls->interfaces.push_back(info);
  return true;
}

void RegisterClassProvider() { RegisterProvider(Class::ID, &g_table, Class::COUNT); }

}  // namespace vorna::host
