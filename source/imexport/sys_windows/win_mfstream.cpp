// The byte stream bridge: an IMFByteStream over the host's input streams.
#include "vorna/translationunit.h"
