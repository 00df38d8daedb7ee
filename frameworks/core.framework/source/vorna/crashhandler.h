// What the program does when it fails: crash handling and reports, stack traces and
// their symbols, and hardware break points for debugging.
#pragma once

#include "vorna/staticinterface.h"

namespace vorna {

VORNA_DECLARED_STATIC_INTERFACE(CrashHandler, "vorna.CrashHandler#1", 6);

VORNA_DECLARED_STATIC_INTERFACE(CrashReportServices, "vorna.CrashReportServices#1", 3);

VORNA_DECLARED_STATIC_INTERFACE(StackTrace, "vorna.StackTrace#1", 1);

VORNA_DECLARED_STATIC_INTERFACE(SymbolificationInterface, "vorna.SymbolificationInterface#1", 4);

VORNA_DECLARED_STATIC_INTERFACE(DebugHardwareBreakPointInterface, "vorna.DebugHardwareBreakPointInterface#1", 3);

}  // namespace vorna
