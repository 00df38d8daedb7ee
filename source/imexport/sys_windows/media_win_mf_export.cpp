// The Media Foundation export.
#include "vorna/translationunit.h"

#include "media_foundation_startup.h"
#include "module_stage.h"

namespace tessel {

TESSEL_STAGE(g_exportStartup, "COM apartment and MFStartup for the export", &StartMediaFoundation,
             &StopMediaFoundation);

}  // namespace tessel
