#include "vorna/translationunit.h"

#include "vorna/iostreams.h"

namespace vorna {

VORNA_DEFINE_INTERFACE(BaseStreamInterface, &DataDictionaryObjectInterface::_record);
VORNA_DEFINE_INTERFACE(InputStreamInterface, &BaseStreamInterface::_record);
VORNA_DEFINE_INTERFACE(OutputStreamInterface, &BaseStreamInterface::_record);

}  // namespace vorna
