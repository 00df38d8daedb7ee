// Waiting for conditions and reading data under read-copy-update, beside the locks of
// vorna/lockservices.
#pragma once

#include "vorna/staticinterface.h"

namespace vorna {

VORNA_DECLARED_STATIC_INTERFACE(ConditionVariableInterface, "vorna.ConditionVariableInterface#1", 8);

VORNA_DECLARED_STATIC_INTERFACE(RCU, "vorna.RCU#1", 1);

}  // namespace vorna
