#include "vorna/translationunit.h"

#include "vorna/objectbase.h"

#include "vorna/string.h"

namespace vorna {

VORNA_DEFINE_INTERFACE(ObjectInterface);

String ObjectInterface::ToString(const FormatStatement* statement) const {
  return Invoke<&ObjectInterface::ToString, kToString>(statement);
}

}  // namespace vorna
