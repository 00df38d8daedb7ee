// Memory beyond System: allocators of one's own, the factory of arrays and weak
// references (which this code does not hold).
#pragma once

#include "vorna/staticinterface.h"

namespace vorna {

VORNA_DECLARED_STATIC_INTERFACE(CustomAllocatorInterface, "vorna.CustomAllocatorInterface#1", 8);

VORNA_DECLARED_STATIC_INTERFACE(ArrayFactory, "vorna.ArrayFactory#1", 2);

VORNA_DECLARED_STATIC_INTERFACE(WeakRefServices, "vorna.WeakRefServices#1", 8);

}  // namespace vorna
