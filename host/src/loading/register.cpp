// The host's own module record: the classes and objects the host defines with the
// client layer's records, loaded at start like a module's.
#include "vorna/translationunit.h"

VORNA_MODULE("net.vorna.host", "net.vorna.core.framework");
