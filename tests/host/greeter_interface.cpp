// The test program's own record of the test module's interface.
#include "vorna/translationunit.h"

#include "test_module/greeter.h"

namespace tessel::testmodule {
VORNA_DEFINE_INTERFACE(GreeterInterface, &vorna::ObjectInterface::_record);
}
