// Something that runs once and can be cancelled, and its base class.
#pragma once

#include "vorna/objectbase.h"
#include "vorna/objectuse.h"

namespace vorna {

VORNA_DECLARED_INTERFACE(ExecutionInterface, ObjectInterface, "vorna.ExecutionInterface#1", refclass::STRONG,
                         kRun, kIsCancelled, kCancel);

extern ObjectUseRecord g_ExecutionBaseClass;

}  // namespace vorna
