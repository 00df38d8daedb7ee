#include "vorna/translationunit.h"

#include "vorna/systemprocess.h"

namespace vorna {

VORNA_DEFINE_INTERFACE(SystemProcessObjectInterface, &ObserverObjectInterface::_record);

VORNA_DEFINE_INTERFACE(SystemProcessKilledErrorInterface, &ErrorInterface::_record);

VORNA_DEFINE_INTERFACE(SystemProcessOperationErrorInterface, &ErrorInterface::_record);

VORNA_DEFINE_DECLARED_STATIC_INTERFACE(SystemProcessInterface, nullptr);

VORNA_DEFINE_OBJECT_USE(g_SystemProcessObjectClass, "vorna.SystemProcessObjectClass");
VORNA_DEFINE_OBJECT_USE(g_SystemProcessKilledErrorObject, "vorna.SystemProcessKilledErrorObject");
VORNA_DEFINE_OBJECT_USE(g_SystemProcessOperationErrorObject, "vorna.SystemProcessOperationErrorObject");

}  // namespace vorna
