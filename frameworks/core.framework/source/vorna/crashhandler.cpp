#include "vorna/translationunit.h"

#include "vorna/crashhandler.h"

namespace vorna {

VORNA_DEFINE_DECLARED_STATIC_INTERFACE(CrashHandler, nullptr);

VORNA_DEFINE_DECLARED_STATIC_INTERFACE(CrashReportServices, nullptr);

VORNA_DEFINE_DECLARED_STATIC_INTERFACE(StackTrace, nullptr);

VORNA_DEFINE_DECLARED_STATIC_INTERFACE(SymbolificationInterface, nullptr);

VORNA_DEFINE_DECLARED_STATIC_INTERFACE(DebugHardwareBreakPointInterface, nullptr);

}  // namespace vorna
