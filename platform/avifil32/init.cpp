// AVIFileInit and AVIFileExit: counted like the platform's library start-up.
#include "platform_counters.h"
#include "vfw.h"

using tessel::platform::GetCounters;

extern "C" void WINAPI AVIFileInit() { ++GetCounters().aviInitCalls; }
extern "C" void WINAPI AVIFileExit() { ++GetCounters().aviExitCalls; }
