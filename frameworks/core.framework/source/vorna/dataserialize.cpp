#include "vorna/translationunit.h"

#include "vorna/dataserialize.h"

namespace vorna {

VORNA_DEFINE_INTERFACE(DataSerializeInterface, &ObjectInterface::_record);

VORNA_DEFINE_INTERFACE(DataSerializeReaderInterface, &DataSerializeInterface::_record);

VORNA_DEFINE_INTERFACE(DataSerializeWriterInterface, &DataSerializeInterface::_record);

VORNA_DEFINE_OBJECT_USE(g_DataSerializeBaseClass, "vorna.DataSerializeBaseClass");
VORNA_DEFINE_OBJECT_USE(g_DataSerializeReaderClass, "vorna.DataSerializeReaderClass");
VORNA_DEFINE_OBJECT_USE(g_DataSerializeWriterClass, "vorna.DataSerializeWriterClass");

}  // namespace vorna
