// The AVI export through Video for Windows: the compressor keys of the settings, the AVI
// file format and saver with their published entries, and the stage that starts the
// AVI library. The records below are linked in the order the host creates them.
#include "vorna/translationunit.h"

#include <vfw.h>

#include "avi_saver.h"
#include "avi_settings.h"
#include "export_file_formats.h"
#include "vorna/objectuse.h"
#include "vorna/publishedobject.h"
#include "vorna/resourceid.h"
#include "vorna/system_win.h"

namespace tessel {

using namespace vorna;

VORNA_DEFINE_RESOURCE_ID(g_settingAviType, "avitype");
VORNA_DEFINE_RESOURCE_ID(g_settingAviHandler, "avihandler");

VORNA_DEFINE_OBJECT_USE(g_aviFileFormatUse, "vorna.FileFormats:movie.avi");

VORNA_COMPONENT_CLASS(FileFormatMovieAviImpl, g_aviFileFormatClass, "net.vorna.fileformat.movie.avi",
                      ".FileFormatMovieAviImpl", &g_FileFormatImageBaseClass, &FileFormatInterface::_record,
                      VORNA_OVERRIDE(FileFormatInterface, Detect), VORNA_OVERRIDE(DataDictionaryObjectInterface, GetData));
VORNA_PUBLISHED_OBJECT(g_aviFileFormat, "vorna.FileFormats", "movie.avi", g_aviFileFormatClass);

VORNA_COMPONENT_CLASS(MovieSaverWinAviImpl, g_aviSaverClass, "net.vorna.image.saver.avi", ".MovieSaverWinAviImpl",
                      &g_MediaOutputUrlBaseClass, &MediaOutputUrlInterface::_record,
                      VORNA_OVERRIDE(DataDictionaryObjectInterface, GetData),
                      VORNA_OVERRIDE(DataDescriptionObjectInterface, GetObjectDescription),
                      VORNA_OVERRIDE(MediaConverterInterface, Analyze),
                      VORNA_OVERRIDE(MediaConverterInterface, PrepareExecute),
                      VORNA_OVERRIDE(MediaConverterInterface, Execute), VORNA_OVERRIDE(MediaConverterInterface, Close),
                      VORNA_OVERRIDE(MediaOutputUrlInterface, GetFileFormat),
                      VORNA_OVERRIDE(MediaOutputUrlInterface, EditSystemOptions),
                      VORNA_OVERRIDE(MediaOutputUrlInterface, CheckBitmapSize));
VORNA_PUBLISHED_CLASS(g_aviSaver, "vorna.ImageSavers", "avi", g_aviSaverClass);

namespace {

Result<void> StartAviFile() {
  VORNA_RETURN_ON_ERROR(SystemWindows::EnterComApartment(nullptr, 2));
  AVIFileInit();
  return OK;
}

void StopAviFile() {
  AVIFileExit();
  SystemWindows::LeaveComApartment();
}

}  // namespace

VORNA_INITIALIZATION_STAGE(g_aviStartup, "COM apartment and AVIFileInit", &StartAviFile, &StopAviFile);

}  // namespace tessel
