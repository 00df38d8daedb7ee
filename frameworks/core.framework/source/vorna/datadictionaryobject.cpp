#include "vorna/translationunit.h"

#include "vorna/datadictionaryobject.h"

namespace vorna {

VORNA_DEFINE_INTERFACE(DataDictionaryObjectInterface, &ObjectInterface::_record);
VORNA_DEFINE_OBJECT_USE(g_DataDictionaryObjectClass, "vorna.DataDictionaryObjectClass");

VORNA_DEFINE_INTERFACE(DataDictionaryReferenceObjectInterface, &DataDictionaryObjectInterface::_record);

VORNA_DEFINE_OBJECT_USE(g_DataDictionaryObjectEmptyClass, "vorna.DataDictionaryObjectEmptyClass");
VORNA_DEFINE_OBJECT_USE(g_DataDictionaryObjectLockedClass, "vorna.DataDictionaryObjectLockedClass");
VORNA_DEFINE_OBJECT_USE(g_DataDictionaryObjectReferenceClass, "vorna.DataDictionaryObjectReferenceClass");
VORNA_DEFINE_OBJECT_USE(g_DataDictionaryObjectSyncedClass, "vorna.DataDictionaryObjectSyncedClass");

}  // namespace vorna
