// The Media Foundation import.
#include "vorna/translationunit.h"

#include "media_win_mf.h"

#include "media_foundation_startup.h"
#include "vorna/configuration.h"

namespace tessel {

VORNA_CONFIG_BOOL(g_mediaFoundationDisableHardwareYUVtoRGB, false,
                  "disables the hardware acceleration avaiable starting with windows 8");
VORNA_CONFIG_BOOL(g_mediaFoundationUseMSUrlReader, false,
                  "uses the original microsoft url reader instead our own byte stream reader.");

VORNA_INITIALIZATION_STAGE(g_importStartup, "COM apartment and MFStartup for the import", &StartMediaFoundation,
             &StopMediaFoundation);

}  // namespace tessel
