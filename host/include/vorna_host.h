// The public face of the small host: start and stop, module loading by name, the
// configuration, console capture and the switches tests use. Tools and tests include
// this header; modules never do.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "vorna/module.h"

#pragma GCC visibility push(default)

namespace vorna::host {

struct HostOptions {
  std::string moduleDirectory;  // where LoadModule looks for NAME.so; several joined by ':'
};

// Brings the host up: its services, registries, error classes and own classes. Safe
// to call again; each Start is balanced by one Stop.
Result<void> Start(const HostOptions& options);
void Stop();
Bool IsStarted();

class LoadedModule;

// Loads NAME.so from the first module directory that has it, resolves its records, creates its classes
// and published objects and runs its init stages. A failing init stage undoes the
// stages already done and unloads the library again.
Result<LoadedModule*> LoadModule(const std::string& name);
// Runs the free stages, erases what the module inserted and unloads it.
void UnloadModule(LoadedModule* module);

// Lets the host serve the client layer compiled into the calling executable (tests,
// tools): its tables are resolved like a module's.
Result<void> AttachClientRecords(ModuleRecord** list);

// Start for an executable that uses the client layer itself: the host comes up and
// serves the caller's own copy of the client layer as well.
inline Result<void> StartWithClient(const HostOptions& options) {
  VORNA_RETURN_ON_ERROR(Start(options));
  return AttachClientRecords(&g_privateModules);
}

// What a loaded module declared, for the command line's listing.
struct ModuleDescription {
  std::string id;
  std::vector<std::string> dependencies;
  std::vector<std::string> translationUnits;
  std::vector<std::string> initStages;  // "unit: init, free"
};
std::vector<ModuleDescription> DescribeModule(const LoadedModule* module);

// What a loaded module declares of the host, by id, and whether the host resolved it:
// its interfaces (virtual and static), the published objects it uses (classes, error
// classes, registry members) and its resource ids (which the host always fills).
struct DeclaredEntity {
  std::string id;
  Bool resolved;
};
struct ModuleDeclarations {
  std::vector<DeclaredEntity> interfaces;
  std::vector<DeclaredEntity> objects;
  std::vector<DeclaredEntity> resourceIds;
};
ModuleDeclarations DescribeDeclarations(const LoadedModule* module);

// The head of the module's list of records (its g_privateModules), for tests that read
// the records themselves.
ModuleRecord* GetModuleRecords(const LoadedModule* module);

// Configuration variables: set by name ("true", "false", "1", "0"); a value set before
// a variable is registered is applied when it is. False for an unknown value text.
Bool SetConfiguration(const std::string& name, const std::string& value);
struct ConfigurationInfo {
  std::string name;
  std::string help;
  Bool value;
};
std::vector<ConfigurationInfo> ListConfiguration();

// Console: every line the host or a module outputs. The default sink is stdout.
void SetConsoleSink(std::function<void(const char* line)> sink);
void SetOutputMask(UInt32 mask);

// Registries, for listings.
std::vector<std::string> ListRegistry(const std::string& registry);

// Named in-memory blobs, read through memory://NAME urls. Registering a name again
// replaces its bytes; a stream that is open keeps reading the bytes it opened. Blobs
// outlive Stop; safe from any thread.
void RegisterMemoryBlob(const std::string& name, std::vector<UChar> bytes);
// False when no blob has the name.
Bool UnregisterMemoryBlob(const std::string& name);

// Job pool: restarts it with count worker threads (0: one per core, as at start). For
// tests; call it while no job is queued or running.
void SetJobThreadCount(Int count);

// Memory: allocations through System fail once `after` more have succeeded (-1: never).
void FailAllocationsAfter(Int after);
// The same for one allocation only: the one after `after` more have succeeded fails,
// and those behind it succeed again.
void FailOneAllocationAfter(Int after);
// Allocations refused so far by either switch.
Int GetRefusedAllocationCount();
Int GetLiveAllocationCount();

}  // namespace vorna::host

#pragma GCC visibility pop
