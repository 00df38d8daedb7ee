#include "vorna/translationunit.h"

#include "vorna/identifiers.h"

namespace vorna {

VORNA_DEFINE_DECLARED_STATIC_INTERFACE(UuidInterface, nullptr);

VORNA_DEFINE_DECLARED_STATIC_INTERFACE(SecureRandom, nullptr);

VORNA_DEFINE_DECLARED_STATIC_INTERFACE(UnicodeUtils, nullptr);

}  // namespace vorna
