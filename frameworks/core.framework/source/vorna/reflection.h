// Reflection: classes, containers, functions, members, namespaces and proxies of the
// program described at run time.
#pragma once

#include "vorna/staticinterface.h"

namespace vorna {

VORNA_DECLARED_STATIC_INTERFACE(ReflectionClass, "vorna.reflection.Class#1", 15);

VORNA_DECLARED_STATIC_INTERFACE(ReflectionContainer, "vorna.reflection.Container#1", 12);

VORNA_DECLARED_STATIC_INTERFACE(ReflectionFunction, "vorna.reflection.Function#1", 11);

VORNA_DECLARED_STATIC_INTERFACE(ReflectionMember, "vorna.reflection.Member#1", 7);

VORNA_DECLARED_STATIC_INTERFACE(ReflectionNamespace, "vorna.reflection.Namespace#1", 15);

VORNA_DECLARED_STATIC_INTERFACE(ReflectionProxy, "vorna.reflection.Proxy#1", 5);

}  // namespace vorna
