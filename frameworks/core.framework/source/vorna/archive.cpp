#include "vorna/translationunit.h"

#include "vorna/archive.h"

namespace vorna {

VORNA_DEFINE_INTERFACE(ReadArchiveInterface, &ObjectInterface::_record);

VORNA_DEFINE_INTERFACE(WriteArchiveInterface, &ObjectInterface::_record);

}  // namespace vorna
