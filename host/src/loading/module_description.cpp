// What a loaded module declared, read back from its records for listings.
#include "loading/loader.h"
#include "vorna_host.h"

namespace vorna::host {

namespace {

std::vector<std::string> UnitNames(const ModuleRecord* module) {
  std::vector<std::string> names;
  for (const TranslationUnitRecord* unit = module->units; unit; unit = static_cast<const TranslationUnitRecord*>(unit->next))
    names.insert(names.begin(), unit->id.GetCString());
  return names;
}

std::vector<std::string> StageNames(const ModuleRecord* module) {
  std::vector<std::string> stages;
  for (const TranslationUnitRecord* unit = module->units; unit; unit = static_cast<const TranslationUnitRecord*>(unit->next)) {
    std::vector<std::string> ofUnit;
    for (const EntityRecord* def = unit->first; def; def = def->next) {
      if (EntityKind(def->kind) != EntityKind::INITIALIZATION) continue;
      ofUnit.push_back(std::string(unit->id.GetCString()) + ": " + def->id.GetCString());
    }
    stages.insert(stages.begin(), ofUnit.begin(), ofUnit.end());
  }
  return stages;
}

void AddImport(const EntityRecord* import, ModuleDeclarations& declarations) {
  DeclaredEntity entity{import->id.GetCString(), import->IsResolved()};
  if (EntityKind(import->kind) == EntityKind::OBJECT)
    declarations.objects.push_back(entity);
  else
    declarations.interfaces.push_back(entity);
}

}  // namespace

ModuleDeclarations DescribeDeclarations(const LoadedModule* module) {
  ModuleDeclarations declarations;
  for (const ModuleRecord* record = *module->list; record; record = record->nextModule) {
    for (const EntityRecord* import = record->imports; import; import = import->next) AddImport(import, declarations);
    for (const ResourceIdUse* use = record->resourceIds; use; use = use->next)
      declarations.resourceIds.push_back({use->name, use->variable->IsSet()});
  }
  return declarations;
}

ModuleRecord* GetModuleRecords(const LoadedModule* module) { return *module->list; }

std::vector<ModuleDescription> DescribeModule(const LoadedModule* module) {
  std::vector<ModuleDescription> list;
  for (const ModuleRecord* record = *module->list; record; record = record->nextModule) {
    ModuleDescription description;
    description.id = record->id.GetCString();
    for (Int i = 0; i < record->dependencyCount; ++i) description.dependencies.push_back(record->dependencies[i].GetCString());
    description.translationUnits = UnitNames(record);
    description.initStages = StageNames(record);
    list.insert(list.begin(), description);
  }
  return list;
}

}  // namespace vorna::host
