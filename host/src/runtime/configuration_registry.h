// The registered configuration variables of all loaded libraries, by name.
#pragma once

#include "vorna/configuration.h"

namespace vorna::host {

class LoadedModule;

// Registers an entry of the library whose stages are running.
void RegisterConfiguration(ConfigurationEntry* entry);
// Forgets the entries of a library that is being unloaded.
void ForgetConfigurations(const LoadedModule* module);

}  // namespace vorna::host
