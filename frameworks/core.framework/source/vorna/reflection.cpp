#include "vorna/translationunit.h"

#include "vorna/reflection.h"

namespace vorna {

VORNA_DEFINE_DECLARED_STATIC_INTERFACE(ReflectionClass, nullptr);

VORNA_DEFINE_DECLARED_STATIC_INTERFACE(ReflectionContainer, nullptr);

VORNA_DEFINE_DECLARED_STATIC_INTERFACE(ReflectionFunction, nullptr);

VORNA_DEFINE_DECLARED_STATIC_INTERFACE(ReflectionMember, nullptr);

VORNA_DEFINE_DECLARED_STATIC_INTERFACE(ReflectionNamespace, nullptr);

VORNA_DEFINE_DECLARED_STATIC_INTERFACE(ReflectionProxy, nullptr);

}  // namespace vorna
