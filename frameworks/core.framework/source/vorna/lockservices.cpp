#include "vorna/translationunit.h"

#include "vorna/lockservices.h"

namespace vorna {

VORNA_DEFINE_STATIC_INTERFACE(LockServices, nullptr, &LockServices::Table::Synchronized);

}  // namespace vorna
