// Functions as objects: signatures with named inputs and outputs, functions that can
// be invoked generically, function objects bound to an owner, and their library.
#pragma once

#include "vorna/objectbase.h"
#include "vorna/objectuse.h"

namespace vorna {

VORNA_DECLARED_INTERFACE(FunctionSignatureInterface, ObjectInterface, "vorna.FunctionSignatureInterface#1", refclass::READ_ONLY,
                         kGetInputCount, kGetInputName, kFindInputIndex, kGetInputType, kGetOutputCount,
                         kGetOutputName, kFindOutputIndex, kGetOutputType);

VORNA_DECLARED_INTERFACE(GenericFunctionInterface, FunctionSignatureInterface, "vorna.GenericFunctionInterface#1", refclass::READ_ONLY,
                         kCreateContext, kGetGenericInput, kGetGenericOutput, kInvoke, kInvoke2);

VORNA_DECLARED_INTERFACE(FunctionBaseInterface, ObjectInterface, "vorna.FunctionBaseInterface#1", refclass::STRONG,
                         kInit, kInit2, kSet, kGetOwner, kGetObserver, kGetObserverPointer, kExecute);

VORNA_DECLARED_STATIC_INTERFACE(GenericFunctionLib, "vorna.GenericFunctionLib#1", 6);

extern ObjectUseRecord g_FunctionBaseClass;

}  // namespace vorna
