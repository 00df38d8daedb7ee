#include "vorna/translationunit.h"

#include "vorna/execution.h"

namespace vorna {

VORNA_DEFINE_INTERFACE(ExecutionInterface, &ObjectInterface::_record);

VORNA_DEFINE_OBJECT_USE(g_ExecutionBaseClass, "vorna.ExecutionBaseClass");

}  // namespace vorna
