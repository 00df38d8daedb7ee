// Printable names of the platform's GUIDs, for diagnostics and messages: the published
// name of an attribute key, major type, subtype or interface, or else the registry form
// with braces. Never fails: a name that can't be made is the empty String.
#pragma once

#include <guiddef.h>

#include "vorna/string.h"

namespace tessel {

vorna::String GuidName(const GUID& guid);

}  // namespace tessel
