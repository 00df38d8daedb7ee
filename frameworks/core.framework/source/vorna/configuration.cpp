#include "vorna/translationunit.h"

#include "vorna/configuration.h"

#include "vorna/system.h"

namespace vorna {

namespace {

// Zero-initialised, so entries may arrive from initialisers of any file.
ConfigurationEntry g_table[CONFIGURATION_TABLE_SIZE];
Int g_count = 0;

Bool HostHandlesConfiguration() {
  for (ModuleRecord* module = g_privateModules; module; module = module->nextModule)
    if (module->flags & entityflags::OWN_CONFIGURATION) return true;
  return false;
}

Result<void> RegisterConfigurations() {
  if (HostHandlesConfiguration()) return OK;
  for (Int i = 0; i < g_count; ++i) System::RegisterConfiguration(&g_table[i]);
  return OK;
}

// Only Bools are declared here, so no entry holds a reference at module end.
void FreeConfigurations() {
  for (Int i = 0; i < g_count; ++i)
    if (g_table[i].state == 3 || g_table[i].state == 4) g_table[i].state = 0;
}

VORNA_INITIALIZATION_STAGE(g_configurationStage, "configuration", &RegisterConfigurations, &FreeConfigurations);

}  // namespace

Bool ConfigurationVariable(const Char* name, Bool* variable, Bool defaultValue, UInt32 type, const Char* help) {
  if (g_count < CONFIGURATION_TABLE_SIZE) {
    g_table[g_count++] = {name, help, type, variable, 0};
  } else {
    *variable = defaultValue;
  }
  return defaultValue;
}

ConfigurationEntry* GetConfigurationTable(Int& count) {
  count = g_count;
  return g_table;
}

VORNA_DEFINE_DECLARED_STATIC_INTERFACE(Configuration, nullptr);

}  // namespace vorna
