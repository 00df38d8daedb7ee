// Run loops of threads that wait for events, and the timers that fire on them.
#pragma once

#include "vorna/staticinterface.h"

namespace vorna {

VORNA_DECLARED_STATIC_INTERFACE(RunLoop, "vorna.RunLoop#1", 11);

VORNA_DECLARED_STATIC_INTERFACE(TimerInterface, "vorna.TimerInterface#1", 9);

}  // namespace vorna
