// Asking the user for a password: the object that asks, and the static method that
// answers without a host (it asks nobody and gives nothing).
#pragma once

#include "vorna/objectbase.h"

namespace vorna {

VORNA_DECLARED_INTERFACE(AskPasswordInterface, ObjectInterface, "vorna.AskPasswordInterface#1", refclass::STRONG,
                         kAskPasswordFromUser);

VORNA_DECLARED_STATIC_INTERFACE(AskPasswordMethod, "vorna.AskPasswordMethod#1", 2);

}  // namespace vorna
