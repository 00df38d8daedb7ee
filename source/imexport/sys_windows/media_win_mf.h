// The Media Foundation import: its configuration variables, read each time a source
// is opened, and the definitions of its stream classes, of which the analysis makes
// objects.
#pragma once

#include "vorna/records.h"

namespace tessel {

// Skips the advanced video processing attempt when a source is opened.
extern vorna::Bool g_mediaFoundationDisableHardwareYUVtoRGB;
// Opens sources with the platform's URL reader instead of the byte stream bridge.
extern vorna::Bool g_mediaFoundationUseMSUrlReader;

extern vorna::ObjectDefinitionRecord g_movieStreamClass;
extern vorna::ObjectDefinitionRecord g_audioStreamClass;

}  // namespace tessel
