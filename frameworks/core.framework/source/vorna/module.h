// The module list: g_privateModules, the one exported symbol of every library with
// client code, heads the list of its ModuleRecords. Each record links itself in at the
// head while static initialisers run. A module declares its own record once with
// VORNA_MODULE in its register unit; the three framework records belong to the client
// layer.
#pragma once

#include <iterator>

#include "vorna/records.h"

extern "C" VORNA_EXPORT vorna::ModuleRecord* g_privateModules;

namespace vorna {

// The framework records of the client code compiled into this library.
extern ModuleRecord g_coreFrameworkModule;
extern ModuleRecord g_imageFrameworkModule;
extern ModuleRecord g_systemFrameworkModule;

constexpr ModuleRecord MakeModuleRecord(const Char* id, UInt32 flags, const Id* dependencies, Int count) {
  ModuleRecord record{};
  record.kind = UInt32(EntityKind::MODULE);
  record.id = Id(id);
  record.flags = entityflags::RESOLVE | entityflags::DEFINITION | flags;
  record.dependencies = dependencies;
  record.dependencyCount = count;
  record.listHead = &g_privateModules;
  return record;
}

// Links a module record in at the head of g_privateModules and appends it to the
// definitions of its register unit.
void LinkModule(ModuleRecord* module, TranslationUnitRecord* registerUnit);

// Pushes a translation unit on the front of its module's list.
void LinkUnit(TranslationUnitRecord* unit);

// Appends a definition to its unit's list.
void LinkDefinition(EntityRecord* record, TranslationUnitRecord* unit);

// Puts a record of an entity that lives elsewhere into its module's imports.
void LinkImport(EntityRecord* record, TranslationUnitRecord* unit);

// Adds a use to its unit's list (uses in a register unit stay out of the list).
void LinkUse(EntityUse* use, TranslationUnitRecord* unit);

// Adds a resource id to the module's list.
void LinkResourceId(ResourceIdUse* use, ModuleRecord* module);

// The file's name behind the last '/' or else behind the last '\\'.
constexpr const Char* BaseName(const Char* path) {
  const Char* name = path;
  for (const Char* p = path; *p; ++p)
    if (*p == '/') name = p + 1;
  if (name == path)
    for (const Char* p = path; *p; ++p)
      if (*p == '\\') name = p + 1;
  return name;
}

constexpr Bool IsRegisterUnit(const Char* name) {
  const Char* word = "register";
  for (Int i = 0; word[i]; ++i)
    if (name[i] != word[i]) return false;
  return true;
}

constexpr TranslationUnitRecord MakeUnitRecord(const Char* path, TranslationUnitRecord* self, ModuleRecord* module) {
  TranslationUnitRecord unit{};
  const Char* name = BaseName(path);
  unit.kind = UInt32(EntityKind::TRANSLATION_UNIT);
  unit.id = Id(name);
  unit.owner = self;
  unit.flags = entityflags::RESOLVE | entityflags::DEFINITION | (IsRegisterUnit(name) ? entityflags::REGISTER_UNIT : 0);
  unit.link = module;
  unit.hostWords[0] = -1;
  unit.hostWords[1] = -2;
  unit.hostWords[2] = -1;
  return unit;
}

constexpr InitializationRecord MakeInitializationRecord(const Char* description, Result<void> (*init)(),
                                                      void (*free)()) {
  InitializationRecord record{};
  record.kind = UInt32(EntityKind::INITIALIZATION);
  record.id = Id(description);
  record.flags = entityflags::RESOLVE | entityflags::DEFINITION;
  record.init = init;
  record.free = free;
  return record;
}

}  // namespace vorna

// Defines VAR, a start-up stage of this source file: INIT runs when the host brings
// the library up, FREE when it takes it down; DESCRIPTION says what they do. In a
// source file that includes vorna/translationunit.h.
#define VORNA_INITIALIZATION_STAGE(VAR, DESCRIPTION, INIT, FREE)                                       \
  constinit ::vorna::InitializationRecord VAR = ::vorna::MakeInitializationRecord(DESCRIPTION, INIT, FREE); \
  static const bool VORNA_CONCAT(VAR, _linked) = (::vorna::LinkDefinition(&VAR, &g_translationUnit), true)

// Declares the module of this library: its id and the ids of the modules it needs.
// Goes into the module's register unit.
#define VORNA_MODULE(ID, ...)                                                                 \
  namespace vorna {                                                                           \
  static constinit const Id g_moduleDependencies[] = {__VA_ARGS__};                           \
  constinit ModuleRecord g_moduleRecord =                                                     \
      MakeModuleRecord(ID, 0, g_moduleDependencies, Int(std::size(g_moduleDependencies)));    \
  }                                                                                           \
  static const bool g_moduleLinked = (::vorna::LinkModule(&::vorna::g_moduleRecord, &g_translationUnit), true)
