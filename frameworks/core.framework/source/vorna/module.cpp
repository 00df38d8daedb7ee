#include "vorna/translationunit.h"

#include <iterator>

extern "C" {
VORNA_EXPORT vorna::ModuleRecord* g_privateModules = nullptr;
}

namespace vorna {

constinit ModuleRecord g_coreFrameworkModule =
    MakeModuleRecord("net.vorna.core.framework", entityflags::FRAMEWORK, nullptr, 0);
constinit ModuleRecord g_imageFrameworkModule =
    MakeModuleRecord("net.vorna.image.framework", entityflags::FRAMEWORK, nullptr, 0);
constinit ModuleRecord g_systemFrameworkModule =
    MakeModuleRecord("net.vorna.system.framework", entityflags::FRAMEWORK, nullptr, 0);

namespace {
const bool g_frameworksLinked = [] {
  LinkModule(&g_coreFrameworkModule, &g_translationUnit);
  LinkModule(&g_imageFrameworkModule, nullptr);
  LinkModule(&g_systemFrameworkModule, nullptr);
  return true;
}();
}  // namespace

void LinkModule(ModuleRecord* module, TranslationUnitRecord* registerUnit) {
  module->nextModule = g_privateModules;
  g_privateModules = module;
  if (registerUnit) LinkDefinition(module, registerUnit);
}

void LinkUnit(TranslationUnitRecord* unit) {
  auto* module = static_cast<ModuleRecord*>(unit->link);
  unit->next = module->units;
  module->units = unit;
}

void LinkDefinition(EntityRecord* record, TranslationUnitRecord* unit) {
  record->owner = unit;
  record->next = nullptr;
  if (unit->last)
    unit->last->next = record;
  else
    unit->first = record;
  unit->last = record;
}

void LinkImport(EntityRecord* record, TranslationUnitRecord* unit) {
  auto* module = static_cast<ModuleRecord*>(unit->link);
  record->owner = unit;
  record->next = module->imports;
  module->imports = record;
}

void LinkUse(EntityUse* use, TranslationUnitRecord* unit) {
  if (unit->flags & entityflags::REGISTER_UNIT) return;
  use->next = unit->uses;
  unit->uses = use;
}

void LinkResourceId(ResourceIdUse* use, ModuleRecord* module) {
  use->next = module->resourceIds;
  module->resourceIds = use;
}

}  // namespace vorna
