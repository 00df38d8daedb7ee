// A small media module for the host's and the command line's tests: a reader of memory
// urls named "pattern..." (pattern_reader.cpp) and a saver that records what an export
// gives it (recording_saver.cpp).
#include "vorna/translationunit.h"

VORNA_MODULE("net.vorna.test.media", "net.vorna.core.framework", "net.vorna.image.framework");
