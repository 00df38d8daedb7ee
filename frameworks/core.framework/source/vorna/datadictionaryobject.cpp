#include "vorna/translationunit.h"

#include "vorna/datadictionaryobject.h"

namespace vorna {

VORNA_DEFINE_INTERFACE(DataDictionaryObjectInterface, &ObjectInterface::_record);
VORNA_DEFINE_OBJECT_USE(g_DataDictionaryObjectClass, "vorna.DataDictionaryObjectClass");

}  // namespace vorna
