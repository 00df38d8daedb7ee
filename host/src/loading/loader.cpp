#include "loading/loader.h"

#include <dlfcn.h>

#include <algorithm>
#include <atomic>
#include <map>
#include <mutex>

#include "loading/interface_registry.h"
#include "loading/registries.h"
#include "providers/providers.h"
#include "runtime/configuration_registry.h"
#include "runtime/job_pool.h"
#include "vorna/diagnostics.h"
#include "vorna/errorbase.h"
#include "vorna/formatstring.h"
#include "vorna_host.h"

namespace vorna::host {

namespace {

constexpr SourceLocation LOADER_LOCATION{"host/loader", 1, 0};

std::recursive_mutex g_mutex;
std::vector<std::unique_ptr<LoadedModule>> g_modules;
std::map<std::string, std::unique_ptr<Id>> g_internedIds;
thread_local const LoadedModule* t_loading = nullptr;

const Char* const BUILTIN_MODULES[] = {"net.vorna.core.framework", "net.vorna.image.framework",
                                       "net.vorna.system.framework"};

template <typename F>
void ForEachModuleRecord(ModuleRecord** list, F f) {
  for (ModuleRecord* module = *list; module; module = module->nextModule) f(module);
}

// Units in link order (each unit pushed itself on the front of its module's list).
std::vector<TranslationUnitRecord*> UnitsInOrder(ModuleRecord* module) {
  std::vector<TranslationUnitRecord*> units;
  for (TranslationUnitRecord* unit = module->units; unit; unit = static_cast<TranslationUnitRecord*>(unit->next))
    units.push_back(unit);
  std::reverse(units.begin(), units.end());
  return units;
}

Bool IsKnownModule(const Id& id) {
  for (const Char* builtin : BUILTIN_MODULES)
    if (id == Id(builtin)) return true;
  for (auto& loaded : g_modules)
    for (ModuleRecord* m = *loaded->list; m; m = m->nextModule)
      if (m->id == id) return true;
  return false;
}

// A definition not created yet, looked for among the modules being loaded.
ObjectDefinitionRecord* FindPendingDefinition(const Id& id);

void CreateDefinition(ObjectDefinitionRecord* definition, LoadedModule* module);

Bool ResolveObject(ObjectUseRecord* record) {
  const Data* value = FindPublished(record->id);
  if (!value) {
    ObjectDefinitionRecord* pending = FindPendingDefinition(record->id);
    if (!pending) return false;
    CreateDefinition(pending, nullptr);
    value = FindPublished(record->id);
    if (!value && pending->value.IsPopulated()) value = &pending->value;
  }
  if (!value || value->IsEmpty()) return false;
  std::atomic_ref<const void*>(record->valueSlot).store(value->GetAddress(), std::memory_order_release);
  record->state = 1;
  return true;
}

Bool ResolveImport(EntityRecord* record) {
  switch (EntityKind(record->kind)) {
    case EntityKind::STATIC_INTERFACE:
      return ResolveStaticInterface(static_cast<StaticInterfaceRecord*>(record));
    case EntityKind::INTERFACE:
      return ResolveInterface(static_cast<InterfaceRecord*>(record)) != nullptr;
    case EntityKind::OBJECT:
      return ResolveObject(static_cast<ObjectUseRecord*>(record));
    default:
      return false;
  }
}

// The word of a failed resolution: a holder without an error object. Resolving an
// error class to report the failure could itself fail and ask again.
void* const g_unresolved = nullptr;

// The resolver every module record gets: resolves one entity now.
void Resolve(Result<void>& out, void* handle, const Id*) {
  std::lock_guard lock(g_mutex);
  auto* entry = static_cast<ImportEntry*>(handle);
  out = ResolveImport(entry->record) ? Result<void>() : Result<void>(ErrorResult{&g_unresolved});
}

void* HandleOf(EntityRecord* record) {
  switch (EntityKind(record->kind)) {
    case EntityKind::STATIC_INTERFACE: return static_cast<StaticInterfaceRecord*>(record)->handle;
    case EntityKind::INTERFACE: return static_cast<InterfaceRecord*>(record)->handle;
    default: return static_cast<ObjectUseRecord*>(record)->handle;
  }
}

void SetHandle(EntityRecord* record, void* handle) {
  switch (EntityKind(record->kind)) {
    case EntityKind::STATIC_INTERFACE: static_cast<StaticInterfaceRecord*>(record)->handle = handle; break;
    case EntityKind::INTERFACE: static_cast<InterfaceRecord*>(record)->handle = handle; break;
    default: static_cast<ObjectUseRecord*>(record)->handle = handle; break;
  }
}

// Gives every import a handle and makes every table lead somewhere; a table that is
// served already keeps its entries. Then resolves static interfaces first, since
// resolving the others allocates through them, then interfaces, then objects.
void TakeImports(LoadedModule* module) {
  ForEachModuleRecord(module->list, [&](ModuleRecord* record) {
    record->initializer = &Resolve;
    for (EntityRecord* import = record->imports; import; import = import->next) {
      if (HandleOf(import)) continue;
      module->imports.push_back(std::make_unique<ImportEntry>(ImportEntry{import}));
      SetHandle(import, module->imports.back().get());
      if (EntityKind(import->kind) == EntityKind::STATIC_INTERFACE && !import->IsResolved()) {
        auto* si = static_cast<StaticInterfaceRecord*>(import);
        si->installStubs(&FillCommonStubs, si);
      }
    }
  });
  for (EntityKind kind : {EntityKind::STATIC_INTERFACE, EntityKind::INTERFACE, EntityKind::OBJECT})
    for (auto& entry : module->imports)
      if (EntityKind(entry->record->kind) == kind) ResolveImport(entry->record);
}

const Id* Intern(const Char* name) {
  auto& id = g_internedIds[name];
  if (!id) {
    id = std::make_unique<Id>();
    id->Init(name);
  }
  return id.get();
}

void FillResourceIds(LoadedModule* module, Bool fill) {
  ForEachModuleRecord(module->list, [&](ModuleRecord* record) {
    for (ResourceIdUse* use = record->resourceIds; use; use = use->next)
      use->variable->Set(fill ? Intern(use->name) : nullptr);
  });
}

Result<void> CheckDependencies(LoadedModule* module) {
  Result<void> result;
  ForEachModuleRecord(module->list, [&](ModuleRecord* record) {
    for (Int i = 0; i < record->dependencyCount && !result.IsError(); ++i) {
      if (IsKnownModule(record->dependencies[i])) continue;
      String message = FormatToString("Module @ needs @, which is not loaded.", record->id, record->dependencies[i]);
      result = RaiseError(g_IllegalStateErrorObject, LOADER_LOCATION, &message);
    }
  });
  return result;
}

// Definitions of a module whose Load is running, not yet created.
std::vector<std::pair<LoadedModule*, std::vector<ObjectDefinitionRecord*>>> g_pending;

ObjectDefinitionRecord* FindPendingDefinition(const Id& id) {
  for (auto& [module, definitions] : g_pending)
    for (ObjectDefinitionRecord* definition : definitions)
      if (definition->id == id && definition->state == 0) return definition;
  return nullptr;
}

LoadedModule* OwnerOfPending(ObjectDefinitionRecord* definition) {
  for (auto& [module, definitions] : g_pending)
    if (std::find(definitions.begin(), definitions.end(), definition) != definitions.end()) return module;
  return nullptr;
}

void ReportDefinitionFailure(ObjectDefinitionRecord* definition, ErrorWord error) {
  const Id* errorClass = GetErrorClassId(error);
  String message = ErrorOf(error).GetMessage();
  DiagnosticOutputString(OUTPUT_WARNING,
                         FormatString("@ is not available: @ @", definition->id, errorClass ? *errorClass : Id(), message),
                         __LINE__, __FILE__);
}

Result<void> CreateAndInsert(ObjectDefinitionRecord* definition) {
  VORNA_ASSIGN_OR_RETURN(definition->value, definition->create(*definition));
  return definition->insert(*definition);
}

// Creates and enters one definition; a failure leaves the entity unavailable and is
// reported, but does not stop the load.
void CreateDefinition(ObjectDefinitionRecord* definition, LoadedModule* module) {
  if (definition->state != 0) return;
  definition->state = 1;
  if (!module) module = OwnerOfPending(definition);
  Result<void> created = CreateAndInsert(definition);
  module->definitions.push_back(definition);
  if (created.IsError()) ReportDefinitionFailure(definition, created.GetError());
}

void CollectDefinitions(LoadedModule* module, std::vector<ObjectDefinitionRecord*>& definitions,
                        std::vector<InitializationRecord*>& stages) {
  ForEachModuleRecord(module->list, [&](ModuleRecord* record) {
    for (TranslationUnitRecord* unit : UnitsInOrder(record)) {
      for (EntityRecord* def = unit->first; def; def = def->next) {
        if (EntityKind(def->kind) == EntityKind::OBJECT) definitions.push_back(static_cast<ObjectDefinitionRecord*>(def));
        if (EntityKind(def->kind) == EntityKind::INITIALIZATION) stages.push_back(static_cast<InitializationRecord*>(def));
      }
    }
  });
}

void RunFreeStages(LoadedModule* module) {
  for (auto it = module->stages.rbegin(); it != module->stages.rend(); ++it)
    if ((*it)->free) (*it)->free();
  module->stages.clear();
}

void EraseDefinitions(LoadedModule* module) {
  for (auto it = module->definitions.rbegin(); it != module->definitions.rend(); ++it) {
    ObjectDefinitionRecord* definition = *it;
    definition->erase(*definition);
    if (definition->end) definition->end(*definition);
    definition->value.Reset();
    definition->state = 0;
  }
  module->definitions.clear();
}

void ReleaseImports(LoadedModule* module) {
  for (auto& entry : module->imports) {
    SetHandle(entry->record, nullptr);
    if (EntityKind(entry->record->kind) == EntityKind::OBJECT) static_cast<ObjectUseRecord*>(entry->record)->valueSlot = nullptr;
    entry->record->state = 0;
  }
  module->imports.clear();
}

Result<void> RunInitStages(LoadedModule* module, const std::vector<InitializationRecord*>& stages) {
  const LoadedModule* outer = t_loading;
  t_loading = module;
  Result<void> result;
  for (InitializationRecord* stage : stages) {
    if (stage->init) result = stage->init();
    if (result.IsError()) break;
    module->stages.push_back(stage);
  }
  t_loading = outer;
  return result;
}

void Unload(LoadedModule* module) {
  const LoadedModule* outer = t_loading;
  t_loading = module;
  RunFreeStages(module);
  t_loading = outer;
  ForgetConfigurations(module);
  EraseDefinitions(module);
  ReleaseImports(module);
  FillResourceIds(module, false);
}

}  // namespace

Result<LoadedModule*> AttachRecords(ModuleRecord** list, const std::string& name, void* library) {
  std::lock_guard lock(g_mutex);
  auto module = std::make_unique<LoadedModule>();
  module->name = name;
  module->library = library;
  module->list = list;
  LoadedModule* raw = module.get();
  VORNA_RETURN_ON_ERROR(CheckDependencies(raw));
  g_modules.push_back(std::move(module));
  TakeImports(raw);
  FillResourceIds(raw, true);
  std::vector<ObjectDefinitionRecord*> definitions;
  std::vector<InitializationRecord*> stages;
  CollectDefinitions(raw, definitions, stages);
  g_pending.push_back({raw, definitions});
  for (ObjectDefinitionRecord* definition : definitions) CreateDefinition(definition, raw);
  g_pending.pop_back();
  Result<void> init = RunInitStages(raw, stages);
  if (init.IsError()) {
    // The library itself stays open; the caller that opened it closes it.
    Unload(raw);
    std::erase_if(g_modules, [&](auto& m) { return m.get() == raw; });
    return init.GetErrorResult();
  }
  return raw;
}

// A job of the module can still be on a worker's stack after the module's last object
// is gone (a read job returns after its callback has fired), so the library closes only
// once the pool has no job running or queued.
void DetachRecords(LoadedModule* module) {
  std::unique_lock lock(g_mutex);
  Unload(module);
  void* library = module->library;
  std::erase_if(g_modules, [&](auto& m) { return m.get() == module; });
  lock.unlock();
  WaitForIdleJobPool();
  if (library) dlclose(library);
}

void DetachAll() {
  std::lock_guard lock(g_mutex);
  while (!g_modules.empty()) DetachRecords(g_modules.back().get());
  g_internedIds.clear();
}

void ForgetValue(const void* address) {
  if (!address) return;
  std::lock_guard lock(g_mutex);
  for (auto& module : g_modules)
    for (auto& entry : module->imports) {
      if (EntityKind(entry->record->kind) != EntityKind::OBJECT) continue;
      auto* use = static_cast<ObjectUseRecord*>(entry->record);
      if (use->valueSlot == address) {
        use->valueSlot = nullptr;
        use->state = 0;
      }
    }
}

const LoadedModule* CurrentlyLoading() { return t_loading; }

}  // namespace vorna::host
