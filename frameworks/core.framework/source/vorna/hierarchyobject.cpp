#include "vorna/translationunit.h"

#include "vorna/hierarchyobject.h"

namespace vorna {

VORNA_DEFINE_INTERFACE(HierarchyObjectInterface, &ObserverObjectInterface::_record);

VORNA_DEFINE_OBJECT_USE(g_HierarchyObjectClass, "vorna.HierarchyObjectClass");

}  // namespace vorna
