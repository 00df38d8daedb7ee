// The Media Foundation import: its configuration variables, read each time a source
// is opened, the definitions of the classes of which it makes objects (streams,
// loaders), and the published objects and host classes it uses.
#pragma once

#include "vorna/records.h"

namespace tessel {

// Skips the advanced video processing attempt when a source is opened.
extern vorna::Bool g_mediaFoundationDisableHardwareYUVtoRGB;
// Opens sources with the platform's URL reader instead of the byte stream bridge.
extern vorna::Bool g_mediaFoundationUseMSUrlReader;

extern vorna::ObjectDefinitionRecord g_movieStreamClass;
extern vorna::ObjectDefinitionRecord g_audioStreamClass;
extern vorna::ObjectDefinitionRecord g_movieLoaderClass;
extern vorna::ObjectDefinitionRecord g_audioLoaderClass;

// vorna.FileFormats:movie.winmf and vorna.FileFormats:audio.winmf.
extern vorna::ObjectUseRecord g_movieFileFormatUse;
extern vorna::ObjectUseRecord g_audioFileFormatUse;

}  // namespace tessel
