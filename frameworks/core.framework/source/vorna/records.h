// The records a module and its host exchange. Static initialisers fill them and link
// them into lists that hang off the exported g_privateModules; the host walks those
// lists at load, resolves what they use and fills their tables. Records are static and
// live as long as their module.
#pragma once

#include "vorna/apibase.h"
#include "vorna/data.h"
#include "vorna/id.h"
#include "vorna/resultbase.h"

namespace vorna {

enum class EntityKind : UInt32 {
  INTERFACE = 0,
  STATIC_INTERFACE = 1,
  OBJECT = 2,
  CLASS = 3,
  TRANSLATION_UNIT = 4,
  MODULE = 5,
  INITIALIZATION = 6,
  CONFIGURATION = 7,
};

namespace entityflags {
inline constexpr UInt32 RESOLVE = 0x1;           // the record wants resolving; always set
inline constexpr UInt32 FALLBACK = 0x20;         // static interface with a local fallback
inline constexpr UInt32 REGISTER_UNIT = 0x100;   // the head translation unit of a module
inline constexpr UInt32 DEFINITION = 0x200;      // defined in this module
inline constexpr UInt32 SINGLE_BASE = 0x400;     // virtual interface with one base
inline constexpr UInt32 USED = 0x1000;           // some EntityUse refers to it
inline constexpr UInt32 FRAMEWORK = 0x2000;      // module record of a framework's client code
inline constexpr UInt32 OWN_CONFIGURATION = 0x4000;  // the host handles the variables itself
inline constexpr UInt32 REINITIALIZABLE = 0x10000;
inline constexpr UInt32 REFCLASS_SHIFT = 20;     // bits 20-23: the reference class
}  // namespace entityflags

// Reference classes of interfaces: how objects of an interface are held.
namespace refclass {
inline constexpr UInt32 STRONG = 3;
inline constexpr UInt32 READ_ONLY = 4;
inline constexpr UInt32 COPY_ON_WRITE = 5;
inline constexpr UInt32 COLOR_PROFILE = 6;
}  // namespace refclass

struct ModuleRecord;
struct TranslationUnitRecord;

// The head of every record, 64 bytes.
struct EntityRecord {
  UInt32 kind;
  Id id;
  EntityRecord* owner;  // the declaring translation unit; a unit is its own owner
  UInt64 state;         // 0; written by the host (1 once resolved)
  UInt32 flags;
  EntityRecord* next;   // link in the list that holds it
  void* link;           // a translation unit's ModuleRecord, otherwise 0

  Bool IsResolved() const { return state != 0; }
};
static_assert(sizeof(EntityRecord) == 64);

// "This file needs an entity", for the host's dependency bookkeeping.
struct EntityUse {
  enum Kind : UInt32 { INTERFACE = 1, OBJECT = 2, CLASS = 3, CONFIGURATION = 7 };
  EntityUse* next;
  Int hostWords[2];
  EntityRecord* target;  // the local record, for kind 1
  const Char* file;      // the header that declares the entity
  UInt32 kind;
  const Char* id;
};

// A word the host fills at load with the one interned identity of a name.
class InternedId {
 public:
  const Id* Get() const { return _id; }
  const Id& operator*() const { return *_id; }
  Bool operator==(const InternedId& other) const { return _id == other._id; }
  Bool IsSet() const { return _id != nullptr; }
  void Set(const Id* id) { _id = id; }

 private:
  const Id* _id = nullptr;
};

struct ResourceIdUse {
  InternedId* variable;
  const Char* name;
  ResourceIdUse* next;
};

struct TranslationUnitRecord : EntityRecord {
  EntityRecord* first;  // definitions of this source file, in order
  EntityRecord* last;
  EntityUse* uses;
  Int hostWords[3];
};

// The host's resolver: resolves one entity now, given its handle and id.
using ModuleInitializer = void (*)(Result<void>& out, void* handle, const Id* id);

struct ModuleRecord : EntityRecord {
  TranslationUnitRecord* units;
  EntityRecord* imports;  // interface, static interface and object records used here
  ResourceIdUse* resourceIds;
  Int zero[2];
  ModuleInitializer initializer;  // filled by the host
  const Id* dependencies;
  Int dependencyCount;
  Int zero2;
  ModuleRecord* nextModule;
  ModuleRecord** listHead;
};

struct InterfaceRecord : EntityRecord {
  void* handle;       // filled by the host
  Int offset;         // filled by the host: place of the stretch in every method table
  Int size;           // 8 + 16 * methods, or 1 for an interface without methods
  Int zero;
  const void* base;   // InterfaceRecord* with SINGLE_BASE, else a null-ended array

  const InterfaceRecord* SingleBase() const { return static_cast<const InterfaceRecord*>(base); }
  const InterfaceRecord* const* BaseArray() const { return static_cast<const InterfaceRecord* const*>(base); }
};

struct StaticInterfaceRecord;
// Called by install-stubs so that the host fills the entries without an own stub.
using HostStubFiller = void (*)(StaticInterfaceRecord* record, void** table, const UChar* returnClasses, Int count);

struct StaticInterfaceRecord : EntityRecord {
  void* handle;        // filled by the host
  void** table;        // count function pointers; callers jump through these
  void** secondTable;  // count words, for the host
  UInt* hashes;        // count signature hashes, one per word
  Int count;
  void (*installStubs)(HostStubFiller filler, StaticInterfaceRecord* record);
  Int zero;
  void (*fallback)(void** table);
  Int zero2[2];
};

struct ObjectUseRecord : EntityRecord {
  void* handle;            // filled by the host
  const void* valueSlot;   // address of the value; 0 until resolved
};

struct ObjectDefinitionRecord;
using ObjectCreateFunction = Result<Data> (*)(ObjectDefinitionRecord& record);
using ObjectRecordFunction = Result<void> (*)(ObjectDefinitionRecord& record);
using ObjectEndFunction = void (*)(ObjectDefinitionRecord& record);

struct ObjectDefinitionRecord : EntityRecord {
  ObjectCreateFunction create;
  ObjectEndFunction end;       // may be null
  ObjectRecordFunction insert;
  ObjectEndFunction erase;
  Data value;
  Id insertedId;               // the id under which the value was inserted
};

class ClassHandle;
struct ClassRecord;

struct ClassRecord : EntityRecord {
  void (*construct)(void* component);
  void (*destruct)(void* component);
  Result<void> (*init)(void* component);
  void (*free)(void* component);
  Result<void> (*copyFrom)(void* destination, const void* source);
  Bool (*initMethods)(ClassHandle* cls, ClassRecord* record);
  Result<void> (*reserved0)(void* component);
  void (*reserved1)(void* component);
  Result<void> (*reserved2)(void* component);
  const InterfaceRecord* const* interfaces;  // the interfaces the class adds
  Int interfaceCount;
  Int size;
  Int alignment;
  Int tableSize;             // bytes of the super table
  Int componentOffset;       // written by the host: the component's place in the object
  const void* superTable;    // written by the host: the method table before overrides
  Char name[256];            // the class id: dotted id and class name joined
};

struct InitializationRecord : EntityRecord {
  Result<void> (*init)();
  void (*free)();
};

}  // namespace vorna
