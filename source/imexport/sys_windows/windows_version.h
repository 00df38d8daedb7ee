// The platform version query of the import and the export.
#pragma once

#include "vorna/apibase.h"

namespace tessel {

// True when the platform is at least major.minor with the given service pack.
vorna::Bool IsWindowsVersionOrGreater(vorna::UInt16 major, vorna::UInt16 minor, vorna::UInt16 servicePack);

}  // namespace tessel
