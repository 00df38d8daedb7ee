#include "vorna/translationunit.h"

#include "vorna/datatypelib.h"

namespace vorna {

VORNA_DEFINE_STATIC_INTERFACE(DataTypeLib, nullptr);

}  // namespace vorna
