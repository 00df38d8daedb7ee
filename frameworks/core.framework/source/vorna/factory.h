// Factories: objects that make objects through a delegate, and the table that makes
// factories.
#pragma once

#include "vorna/datadictionaryobject.h"

namespace vorna {

VORNA_DECLARED_INTERFACE(FactoryInterface, DataDictionaryObjectInterface, "vorna.FactoryInterface#1", refclass::READ_ONLY,
                         kPrivateGetDelegate);

VORNA_DECLARED_STATIC_INTERFACE(FactoryFactory, "vorna.FactoryFactory#1", 3);

}  // namespace vorna
