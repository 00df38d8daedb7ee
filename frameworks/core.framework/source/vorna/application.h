// The application around the module: its own services, its resources and their
// strings, its language, the resolution of names, its libraries, and a few odds and
// ends.
#pragma once

#include "vorna/staticinterface.h"

namespace vorna {

VORNA_DECLARED_STATIC_INTERFACE(Application, "vorna.Application#1", 8);

VORNA_DECLARED_STATIC_INTERFACE(Resource, "vorna.Resource#1", 6);

VORNA_DECLARED_STATIC_INTERFACE(StringResourceInterface, "vorna.StringResourceInterface#1", 5);

VORNA_DECLARED_STATIC_INTERFACE(LanguageInterface, "vorna.LanguageInterface#1", 6);

VORNA_DECLARED_STATIC_INTERFACE(ResolveInterface, "vorna.ResolveInterface#1", 2);

VORNA_DECLARED_STATIC_INTERFACE(DllInterface, "vorna.DllInterface#1", 11);

VORNA_DECLARED_STATIC_INTERFACE(Misc, "vorna.Misc#1", 1);

}  // namespace vorna
