// MFStartup and MFShutdown: a process-wide count of start-ups. Each MFStartup is
// balanced by one MFShutdown; the platform is up while the count is above zero.
#include "mfapi.h"
#include "mferror.h"
#include "mfplat/startup.h"
#include "mfplat/work_queue.h"
#include "platform_counters.h"

using tessel::platform::GetCounters;

bool tessel::platform::MediaFoundationStarted() {
  auto& counters = GetCounters();
  return counters.mfStartupCalls.load() > counters.mfShutdownCalls.load();
}

extern "C" HRESULT WINAPI MFStartup(ULONG version, DWORD /*flags*/) {
  auto& c = GetCounters();
  HRESULT injected = c.failNextMFStartup.exchange(0);
  if (injected != 0) return injected;
  if (version != MF_VERSION) return MF_E_BAD_STARTUP_VERSION;
  ++c.mfStartupCalls;
  return S_OK;
}

extern "C" HRESULT WINAPI MFShutdown() {
  auto& c = GetCounters();
  if (c.mfStartupCalls.load() <= c.mfShutdownCalls.load()) return MF_E_PLATFORM_NOT_INITIALIZED;
  // Callbacks still queued may hold the caller's objects; they run before the caller
  // goes on to tear down what they refer to.
  tessel::platform::DrainWorkQueue();
  ++c.mfShutdownCalls;
  return S_OK;
}
