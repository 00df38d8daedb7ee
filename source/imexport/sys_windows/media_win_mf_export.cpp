// The Media Foundation export.
#include "vorna/translationunit.h"

#include "media_foundation_startup.h"

namespace tessel {

VORNA_INITIALIZATION_STAGE(g_exportStartup, "COM apartment and MFStartup for the export", &StartMediaFoundation,
             &StopMediaFoundation);

}  // namespace tessel
