// The module loader: walks a library's g_privateModules, resolves what its records
// use, creates and enters its definitions, runs its init stages, and undoes all of it
// at unload. The host's own client records and an executable's go the same way.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "vorna/records.h"

namespace vorna::host {

struct ImportEntry {
  EntityRecord* record;
};

}  // namespace vorna::host

namespace vorna::host {

class LoadedModule {
 public:
  std::string name;
  void* library = nullptr;  // null for attached records
  ModuleRecord** list = nullptr;
  std::vector<std::unique_ptr<ImportEntry>> imports;
  std::vector<ObjectDefinitionRecord*> definitions;  // created, in order
  std::vector<InitializationRecord*> stages;         // initialised, in order
};

// Loads records that are already in memory (the host's own, an executable's).
Result<LoadedModule*> AttachRecords(ModuleRecord** list, const std::string& name, void* library);
void DetachRecords(LoadedModule* module);
void DetachAll();

// Clears every value slot that points at address (its entry was erased).
void ForgetValue(const void* address);

// The module whose stages are running on this thread, if any.
const LoadedModule* CurrentlyLoading();

}  // namespace vorna::host
