#include "vorna/translationunit.h"

#include "vorna/runloop.h"

namespace vorna {

VORNA_DEFINE_DECLARED_STATIC_INTERFACE(RunLoop, nullptr);

VORNA_DEFINE_DECLARED_STATIC_INTERFACE(TimerInterface, nullptr);

}  // namespace vorna
