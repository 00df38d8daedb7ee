// vorna.System#1 as the host serves it.
#include <chrono>

#include "providers/host_services.h"
#include "providers/providers.h"
#include "runtime/configuration_registry.h"
#include "runtime/console.h"
#include "runtime/memory.h"
#include "runtime/raised_errors.h"
#include "vorna/system.h"

namespace vorna::host {

namespace {

void ReleaseObject(void* object, System::FreeObjectFunction free) { free(object); }

Float64 GetClock() {
  using Clock = std::chrono::steady_clock;
  return std::chrono::duration<Float64>(Clock::now().time_since_epoch()).count();
}

System::Table MakeTable() {
  System::Table table{};
  table.ConsoleOutput = &ConsoleOutput;
  table.RaiseError = &RaiseError;
  table.Alloc = &HostAlloc;
  table.AllocClear = &HostAllocClear;
  table.Realloc = &HostRealloc;
  table.Free = &HostFree;
  table.GetOutputMask = &GetOutputMask;
  table.ReleaseObject = &ReleaseObject;
  table.GetClock = &GetClock;
  table.RaiseErrorCopy = &RaiseErrorCopy;
  table.RegisterConfiguration = &RegisterConfiguration;
  return table;
}

const System::Table g_table = MakeTable();

}  // namespace

void RegisterSystemProvider() { RegisterProvider(System::ID, &g_table, System::COUNT); }

}  // namespace vorna::host
