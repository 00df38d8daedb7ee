#include "vorna/translationunit.h"

#include "vorna/factory.h"

namespace vorna {

VORNA_DEFINE_INTERFACE(FactoryInterface, &DataDictionaryObjectInterface::_record);

VORNA_DEFINE_DECLARED_STATIC_INTERFACE(FactoryFactory, nullptr);

}  // namespace vorna
