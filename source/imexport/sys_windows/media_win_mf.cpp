// The Media Foundation import: configuration, the stream classes, the file formats,
// handlers and loaders, and the start-up stage. The records below are linked in the
// order the host creates them: streams, formats, loaders, handlers, then MFStartup.
#include "vorna/translationunit.h"

#include "media_win_mf.h"

#include "import_streams.h"
#include "media_foundation_startup.h"
#include "vorna/configuration.h"
#include "vorna/objectuse.h"

namespace tessel {

using namespace vorna;

VORNA_CONFIG_BOOL(g_mediaFoundationDisableHardwareYUVtoRGB, false,
                  "disables the hardware acceleration avaiable starting with windows 8");
VORNA_CONFIG_BOOL(g_mediaFoundationUseMSUrlReader, false,
                  "uses the original microsoft url reader instead our own byte stream reader.");

VORNA_DEFINE_OBJECT_USE(g_imageImportStreamClass, "vorna.MediaStreamImageDataImportClass");
VORNA_DEFINE_OBJECT_USE(g_audioImportStreamClass, "vorna.MediaStreamAudioDataImportClass");

VORNA_COMPONENT_CLASS(MediaStreamMovieStreamWinMFImportImpl, g_movieStreamClass, "net.vorna.mediastream.winmf.video",
                      ".MediaStreamMovieStreamWinMFImportImpl", &g_imageImportStreamClass,
                      &MediaStreamImageDataImportInterface::_record);
VORNA_COMPONENT_CLASS(MediaStreamAudioStreamWinMFImportImpl, g_audioStreamClass, "net.vorna.mediastream.winmf.audio",
                      ".MediaStreamAudioStreamWinMFImportImpl", &g_audioImportStreamClass,
                      &MediaStreamAudioDataImportInterface::_record);

VORNA_INITIALIZATION_STAGE(g_importStartup, "COM apartment and MFStartup for the import", &StartMediaFoundation,
                           &StopMediaFoundation);

}  // namespace tessel
