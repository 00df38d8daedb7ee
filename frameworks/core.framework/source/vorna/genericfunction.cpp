#include "vorna/translationunit.h"

#include "vorna/genericfunction.h"

namespace vorna {

VORNA_DEFINE_INTERFACE(FunctionSignatureInterface, &ObjectInterface::_record);

VORNA_DEFINE_INTERFACE(GenericFunctionInterface, &FunctionSignatureInterface::_record);

VORNA_DEFINE_INTERFACE(FunctionBaseInterface, &ObjectInterface::_record);

VORNA_DEFINE_DECLARED_STATIC_INTERFACE(GenericFunctionLib, nullptr);

VORNA_DEFINE_OBJECT_USE(g_FunctionBaseClass, "vorna.FunctionBaseClass");

}  // namespace vorna
