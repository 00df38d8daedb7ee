// Unique ids and random numbers: uuids, a secure random source, and Unicode helpers
// for the texts they are written in.
#pragma once

#include "vorna/staticinterface.h"

namespace vorna {

VORNA_DECLARED_STATIC_INTERFACE(UuidInterface, "vorna.UuidInterface#1", 15);

VORNA_DECLARED_STATIC_INTERFACE(SecureRandom, "vorna.SecureRandom#1", 2);

VORNA_DECLARED_STATIC_INTERFACE(UnicodeUtils, "vorna.UnicodeUtils#1", 10);

}  // namespace vorna
