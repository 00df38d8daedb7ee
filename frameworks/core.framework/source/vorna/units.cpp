#include "vorna/translationunit.h"

#include "vorna/units.h"

namespace vorna {

VORNA_DEFINE_DECLARED_STATIC_INTERFACE(DimensionInterface, nullptr);

VORNA_DEFINE_DECLARED_STATIC_INTERFACE(UnitInterface, nullptr);

}  // namespace vorna
