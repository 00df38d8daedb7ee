// Serialisation of objects into documents and back: the describing base, the reader
// and the writer, with their classes.
#pragma once

#include "vorna/objectbase.h"
#include "vorna/objectuse.h"

namespace vorna {

VORNA_DECLARED_INTERFACE(DataSerializeInterface, ObjectInterface, "vorna.DataSerializeInterface#1", refclass::STRONG,
                         kGetFormat, kDescribeElement, kPrepareHelperClass, kRegisterObjectSubstitution,
                         kRegisterDefaults);

VORNA_DECLARED_INTERFACE(DataSerializeReaderInterface, DataSerializeInterface, "vorna.DataSerializeReaderInterface#1", refclass::STRONG,
                         kReadDocument);

VORNA_DECLARED_INTERFACE(DataSerializeWriterInterface, DataSerializeInterface, "vorna.DataSerializeWriterInterface#1", refclass::STRONG,
                         kWriteDocument);

extern ObjectUseRecord g_DataSerializeBaseClass;
extern ObjectUseRecord g_DataSerializeReaderClass;
extern ObjectUseRecord g_DataSerializeWriterClass;

}  // namespace vorna
