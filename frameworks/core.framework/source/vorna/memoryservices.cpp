#include "vorna/translationunit.h"

#include "vorna/memoryservices.h"

namespace vorna {

VORNA_DEFINE_DECLARED_STATIC_INTERFACE(CustomAllocatorInterface, nullptr);

VORNA_DEFINE_DECLARED_STATIC_INTERFACE(ArrayFactory, nullptr);

VORNA_DEFINE_DECLARED_STATIC_INTERFACE(WeakRefServices, nullptr);

}  // namespace vorna
