// The Media Foundation import: its configuration variables, read each time a source
// is opened.
#pragma once

#include "vorna/apibase.h"

namespace tessel {

// Skips the advanced video processing attempt when a source is opened.
extern vorna::Bool g_mediaFoundationDisableHardwareYUVtoRGB;
// Opens sources with the platform's URL reader instead of the byte stream bridge.
extern vorna::Bool g_mediaFoundationUseMSUrlReader;

}  // namespace tessel
