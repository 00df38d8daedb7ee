// The command line's own module record. Through it the host resolves what the command
// line's source files declare as records themselves, such as the interned ids of the
// setting keys it names (compressor_settings.cpp).
#include "vorna/translationunit.h"

VORNA_MODULE("net.vorna.tessel.cli", "net.vorna.core.framework");
