#include "vorna/translationunit.h"

#include "vorna/application.h"

namespace vorna {

VORNA_DEFINE_DECLARED_STATIC_INTERFACE(Application, nullptr);

VORNA_DEFINE_DECLARED_STATIC_INTERFACE(Resource, nullptr);

VORNA_DEFINE_DECLARED_STATIC_INTERFACE(StringResourceInterface, nullptr);

VORNA_DEFINE_DECLARED_STATIC_INTERFACE(LanguageInterface, nullptr);

VORNA_DEFINE_DECLARED_STATIC_INTERFACE(ResolveInterface, nullptr);

VORNA_DEFINE_DECLARED_STATIC_INTERFACE(DllInterface, nullptr);

VORNA_DEFINE_DECLARED_STATIC_INTERFACE(Misc, nullptr);

}  // namespace vorna
