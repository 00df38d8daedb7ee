// The module's head: its identity and the three frameworks it needs.
#include "vorna/translationunit.h"

VORNA_MODULE("net.vorna.tessel_reel", "net.vorna.core.framework", "net.vorna.image.framework",
             "net.vorna.system.framework");
