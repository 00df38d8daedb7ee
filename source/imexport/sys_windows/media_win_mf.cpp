// The Media Foundation import: configuration, the stream classes, the release of the
// conversion maps, the file formats, loaders and handlers, and the start-up stage. The
// records below are linked in the order the host creates them.
#include "vorna/translationunit.h"

#include "media_win_mf.h"

#include "import_file_formats.h"
#include "import_handlers.h"
#include "import_loaders.h"
#include "import_streams.h"
#include "media_foundation_startup.h"
#include "mf_format_maps.h"
#include "vorna/configuration.h"
#include "vorna/objectuse.h"
#include "vorna/publishedobject.h"

namespace tessel {

using namespace vorna;

VORNA_CONFIG_BOOL(g_mediaFoundationDisableHardwareYUVtoRGB, false,
                  "disables the hardware acceleration avaiable starting with windows 8");
VORNA_CONFIG_BOOL(g_mediaFoundationUseMSUrlReader, false,
                  "uses the original microsoft url reader instead our own byte stream reader.");

VORNA_DEFINE_OBJECT_USE(g_movieFileFormatUse, "vorna.FileFormats:movie.winmf");
VORNA_DEFINE_OBJECT_USE(g_audioFileFormatUse, "vorna.FileFormats:audio.winmf");

VORNA_COMPONENT_CLASS(MediaStreamMovieStreamWinMFImportImpl, g_movieStreamClass, "net.vorna.mediastream.winmf.video",
                      ".MediaStreamMovieStreamWinMFImportImpl", &g_MediaStreamImageDataImportClass,
                      &MediaStreamImageDataImportInterface::_record);
VORNA_COMPONENT_CLASS(MediaStreamAudioStreamWinMFImportImpl, g_audioStreamClass, "net.vorna.mediastream.winmf.audio",
                      ".MediaStreamAudioStreamWinMFImportImpl", &g_MediaStreamAudioDataImportClass,
                      &MediaStreamAudioDataImportInterface::_record);

VORNA_INITIALIZATION_STAGE(g_formatMapsRelease, "releases the conversion maps between subtypes and pixel formats",
                           nullptr, &FreeFormatMaps);

VORNA_COMPONENT_CLASS(FileFormatMovieWinMFImpl, g_movieFileFormatClass, "net.vorna.fileformat.movie.winmf",
                      ".FileFormatMovieWinMFImpl", &g_FileFormatImageBaseClass, &FileFormatInterface::_record,
                      VORNA_OVERRIDE(FileFormatInterface, Detect), VORNA_OVERRIDE(DataDictionaryObjectInterface, GetData));
VORNA_PUBLISHED_OBJECT(g_movieFileFormat, "vorna.FileFormats", "movie.winmf", g_movieFileFormatClass);
VORNA_COMPONENT_CLASS(FileFormatAudioWinMFImpl, g_audioFileFormatClass, "net.vorna.fileformat.audio.winmf",
                      ".FileFormatAudioWinMFImpl", &g_FileFormatBaseClass, &FileFormatInterface::_record,
                      VORNA_OVERRIDE(FileFormatInterface, Detect), VORNA_OVERRIDE(DataDictionaryObjectInterface, GetData));
VORNA_PUBLISHED_OBJECT(g_audioFileFormat, "vorna.FileFormats", "audio.winmf", g_audioFileFormatClass);

// The two loaders and the two handlers each override the same methods.
#define WIN_MF_LOADER_OVERRIDES \
  VORNA_OVERRIDE(MediaConverterInterface, SupportImportStrategy), \
      VORNA_OVERRIDE(DataDictionaryObjectInterface, GetData), \
      VORNA_OVERRIDE(MediaConverterInterface, Analyze), \
      VORNA_OVERRIDE(MediaConverterInterface, PrepareExecute), \
      VORNA_OVERRIDE(MediaConverterInterface, Execute), \
      VORNA_OVERRIDE(MediaConverterInterface, Close)
#define WIN_MF_HANDLER_OVERRIDES \
  VORNA_OVERRIDE(FileFormatHandlerInterface, GetFileFormat), \
      VORNA_OVERRIDE(FileFormatHandlerInterface, GetHandlerType), \
      VORNA_OVERRIDE(FileFormatHandlerInterface, CreateHandler), \
      VORNA_OVERRIDE(FileFormatHandlerInterface, GetDependends)

VORNA_COMPONENT_CLASS(MovieLoaderWinMFImpl, g_movieLoaderClass, "net.vorna.movie.loader.winmf", ".MovieLoaderWinMFImpl",
                      &g_MediaConverterBaseClass, &MediaInputInterface::_record,
                      WIN_MF_LOADER_OVERRIDES);
VORNA_COMPONENT_CLASS(AudioLoaderWinMFImpl, g_audioLoaderClass, "net.vorna.audio.loader.winmf", ".AudioLoaderWinMFImpl",
                      &g_MediaConverterBaseClass, &MediaInputInterface::_record,
                      WIN_MF_LOADER_OVERRIDES);

VORNA_COMPONENT_CLASS(FileFormatHandlerMovieWinMFImpl, g_movieHandlerClass, "net.vorna.fileformathandler.movie.winmf",
                      ".FileFormatHandlerMovieWinMFImpl", nullptr, &MediaSessionFileFormatHandlerInterface::_record,
                      WIN_MF_HANDLER_OVERRIDES);
VORNA_PUBLISHED_OBJECT(g_movieHandler, "vorna.FileFormatHandlers", "movie.winmf", g_movieHandlerClass);
VORNA_COMPONENT_CLASS(FileFormatHandlerAudioWinMFImpl, g_audioHandlerClass, "net.vorna.fileformathandler.audio.winmf",
                      ".FileFormatHandlerAudioWinMFImpl", nullptr, &MediaSessionFileFormatHandlerInterface::_record,
                      WIN_MF_HANDLER_OVERRIDES);
VORNA_PUBLISHED_OBJECT(g_audioHandler, "vorna.FileFormatHandlers", "audio.winmf", g_audioHandlerClass);

VORNA_INITIALIZATION_STAGE(g_importStartup, "COM apartment and MFStartup for the import", &StartMediaFoundation,
                           &StopMediaFoundation);

}  // namespace tessel
