#include "vorna/translationunit.h"

#include "vorna/synchronization.h"

namespace vorna {

VORNA_DEFINE_DECLARED_STATIC_INTERFACE(ConditionVariableInterface, nullptr);

VORNA_DEFINE_DECLARED_STATIC_INTERFACE(RCU, nullptr);

}  // namespace vorna
