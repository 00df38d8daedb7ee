// Counters and timers of the program's performance. Without a host it answers through
// its fallback and measures nothing.
#pragma once

#include "vorna/staticinterface.h"

namespace vorna {

VORNA_DECLARED_STATIC_INTERFACE(PerformanceMonitorInterface, "vorna.PerformanceMonitorInterface#1", 13);

}  // namespace vorna
