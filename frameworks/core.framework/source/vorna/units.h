// Dimensions and units of physical values, which stand in vorna.Dimensions and
// vorna.Units.
#pragma once

#include "vorna/staticinterface.h"

namespace vorna {

VORNA_DECLARED_STATIC_INTERFACE(DimensionInterface, "vorna.DimensionInterface#1", 12);

VORNA_DECLARED_STATIC_INTERFACE(UnitInterface, "vorna.UnitInterface#1", 12);

}  // namespace vorna
