#include "vorna/translationunit.h"

#include "vorna/askpassword.h"

namespace vorna {

VORNA_DEFINE_INTERFACE(AskPasswordInterface, &ObjectInterface::_record);

VORNA_DEFINE_DECLARED_STATIC_INTERFACE(AskPasswordMethod, &DeclaredFallback<AskPasswordMethod>);

}  // namespace vorna
