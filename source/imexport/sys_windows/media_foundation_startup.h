// The start and end of Media Foundation for one part of the module: the calling
// thread enters the COM apartment, then the platform is started. The import and the
// export each hold one start-up of their own and release exactly that one.
#pragma once

#include "vorna/resultbase.h"

namespace tessel {

// A failing MFStartup leaves the apartment again, so that a module that does not come
// up leaves the thread as it found it.
vorna::Result<void> StartMediaFoundation();
void StopMediaFoundation();

}  // namespace tessel
