#include "vorna/translationunit.h"

#include "vorna/performancemonitor.h"

namespace vorna {

VORNA_DEFINE_DECLARED_STATIC_INTERFACE(PerformanceMonitorInterface, &DeclaredFallback<PerformanceMonitorInterface>);

}  // namespace vorna
