// The Media Foundation export: the module's setting keys, the four savers and their file
// formats, and the stage that starts the platform for them and enters them in
// vorna.ImageSavers. The records below are linked in the order the host creates them.
#include "vorna/translationunit.h"

#include "export_file_formats.h"
#include "export_settings.h"
#include "media_foundation_startup.h"
#include "movie_savers.h"
#include "vorna/extensionpoint.h"
#include "vorna/objectuse.h"
#include "vorna/publishedobject.h"
#include "vorna/resourceid.h"

namespace tessel {

using namespace vorna;

VORNA_DEFINE_RESOURCE_ID(g_settingCodec, "codec");
VORNA_DEFINE_RESOURCE_ID(g_settingAudioCodec, "audio.codec");
VORNA_DEFINE_RESOURCE_ID(g_settingAudioSamplerate, "audio.samplerate");
VORNA_DEFINE_RESOURCE_ID(g_settingAudioKilobitrate, "audio.kilobitrate");

namespace {

VORNA_DEFINE_OBJECT_USE(g_mp4FileFormatUse, "vorna.FileFormats:movie.mp4");
VORNA_DEFINE_OBJECT_USE(g_3gpFileFormatUse, "vorna.FileFormats:movie.3gp");
VORNA_DEFINE_OBJECT_USE(g_asfFileFormatUse, "vorna.FileFormats:movie.asf");
VORNA_DEFINE_OBJECT_USE(g_wmvFileFormatUse, "vorna.FileFormats:movie.wmv");

}  // namespace

const MovieContainer& MovieSaverMP4Impl::CONTAINER = mp4Container;
const MovieContainer& MovieSaver3GPImpl::CONTAINER = threeGpContainer;
const MovieContainer& MovieSaverASFImpl::CONTAINER = asfContainer;
const MovieContainer& MovieSaverWMVImpl::CONTAINER = wmvContainer;
ObjectUseRecord& MovieSaverMP4Impl::FILE_FORMAT = g_mp4FileFormatUse;
ObjectUseRecord& MovieSaver3GPImpl::FILE_FORMAT = g_3gpFileFormatUse;
ObjectUseRecord& MovieSaverASFImpl::FILE_FORMAT = g_asfFileFormatUse;
ObjectUseRecord& MovieSaverWMVImpl::FILE_FORMAT = g_wmvFileFormatUse;

#define SAVER_FILE_FORMAT_OVERRIDES \
  VORNA_OVERRIDE(FileFormatInterface, Detect), VORNA_OVERRIDE(DataDictionaryObjectInterface, GetData)

VORNA_COMPONENT_CLASS(FileFormatMovieMP4Impl, g_mp4FileFormatClass, "net.vorna.fileformat.movie.mp4",
                      ".FileFormatMovieMP4Impl", &g_FileFormatImageBaseClass, &FileFormatInterface::_record,
                      SAVER_FILE_FORMAT_OVERRIDES);
VORNA_PUBLISHED_OBJECT(g_mp4FileFormat, "vorna.FileFormats", "movie.mp4", g_mp4FileFormatClass);
VORNA_COMPONENT_CLASS(FileFormatMovieWMVImpl, g_wmvFileFormatClass, "net.vorna.fileformat.movie.wmv",
                      ".FileFormatMovieWMVImpl", &g_FileFormatImageBaseClass, &FileFormatInterface::_record,
                      SAVER_FILE_FORMAT_OVERRIDES);
VORNA_PUBLISHED_OBJECT(g_wmvFileFormat, "vorna.FileFormats", "movie.wmv", g_wmvFileFormatClass);
VORNA_COMPONENT_CLASS(FileFormatMovieASFImpl, g_asfFileFormatClass, "net.vorna.fileformat.movie.asf",
                      ".FileFormatMovieASFImpl", &g_FileFormatImageBaseClass, &FileFormatInterface::_record,
                      SAVER_FILE_FORMAT_OVERRIDES);
VORNA_PUBLISHED_OBJECT(g_asfFileFormat, "vorna.FileFormats", "movie.asf", g_asfFileFormatClass);
VORNA_COMPONENT_CLASS(FileFormatMovie3GPImpl, g_3gpFileFormatClass, "net.vorna.fileformat.movie.3gp",
                      ".FileFormatMovie3GPImpl", &g_FileFormatImageBaseClass, &FileFormatInterface::_record,
                      SAVER_FILE_FORMAT_OVERRIDES);
VORNA_PUBLISHED_OBJECT(g_3gpFileFormat, "vorna.FileFormats", "movie.3gp", g_3gpFileFormatClass);

// The four savers override the same methods.
#define MOVIE_SAVER_OVERRIDES \
  VORNA_OVERRIDE(DataDictionaryObjectInterface, GetData), \
      VORNA_OVERRIDE(DataDescriptionObjectInterface, GetObjectDescription), \
      VORNA_OVERRIDE(MediaConverterInterface, Analyze), \
      VORNA_OVERRIDE(MediaConverterInterface, PrepareExecute), \
      VORNA_OVERRIDE(MediaConverterInterface, Execute), \
      VORNA_OVERRIDE(MediaConverterInterface, Close), \
      VORNA_OVERRIDE(MediaOutputUrlInterface, GetFileFormat), \
      VORNA_OVERRIDE(MediaOutputUrlInterface, CheckBitmapSize)

VORNA_COMPONENT_CLASS(MovieSaverMP4Impl, g_mp4SaverClass, "net.vorna.image.saver.mp4", ".MovieSaverMP4Impl",
                      &g_MediaOutputUrlBaseClass, &MediaOutputUrlInterface::_record, MOVIE_SAVER_OVERRIDES);
VORNA_COMPONENT_CLASS(MovieSaver3GPImpl, g_3gpSaverClass, "net.vorna.image.saver.3gp", ".MovieSaver3GPImpl",
                      &g_MediaOutputUrlBaseClass, &MediaOutputUrlInterface::_record, MOVIE_SAVER_OVERRIDES);
VORNA_COMPONENT_CLASS(MovieSaverASFImpl, g_asfSaverClass, "net.vorna.image.saver.asf", ".MovieSaverASFImpl",
                      &g_MediaOutputUrlBaseClass, &MediaOutputUrlInterface::_record, MOVIE_SAVER_OVERRIDES);
VORNA_COMPONENT_CLASS(MovieSaverWMVImpl, g_wmvSaverClass, "net.vorna.image.saver.wmv", ".MovieSaverWMVImpl",
                      &g_MediaOutputUrlBaseClass, &MediaOutputUrlInterface::_record, MOVIE_SAVER_OVERRIDES);

namespace {

// The ids entered in vorna.ImageSavers, in order; what the free stage takes out again.
BaseArray<Id> savedSaverIds;

Result<void> EnterSaver(const Id& id, ObjectDefinitionRecord& saverClass) {
  if (!GetDefinedClass(saverClass)) return RaiseError(g_NullptrErrorObject, VORNA_SOURCE_LOCATION);
  VORNA_RETURN_ON_ERROR(ExtensionPoint::Insert(ExtensionPoint::Find("vorna.ImageSavers"), id, saverClass.value));
  if (!savedSaverIds.Append(id)) return RaiseError(g_OutOfMemoryErrorObject, VORNA_SOURCE_LOCATION);
  return OK;
}

Result<void> EnterSavers() {
  VORNA_RETURN_ON_ERROR(EnterSaver("mp4", g_mp4SaverClass));
  VORNA_RETURN_ON_ERROR(EnterSaver("asf", g_asfSaverClass));
  VORNA_RETURN_ON_ERROR(EnterSaver("wmv", g_wmvSaverClass));
  return EnterSaver("3gp", g_3gpSaverClass);
}

void StopExport() {
  for (const Id& id : savedSaverIds) ExtensionPoint::Erase(ExtensionPoint::Find("vorna.ImageSavers"), id);
  savedSaverIds.Flush();
  StopMediaFoundation();
}

// Starts the platform for the export and enters the savers. The host frees only the
// stages that succeeded, so a failure half way takes out what this one entered and
// shuts the platform down again before it returns.
Result<void> StartExport() {
  VORNA_RETURN_ON_ERROR(StartMediaFoundation());
  Result<void> entered = EnterSavers();
  if (entered.IsError()) StopExport();
  return entered;
}

}  // namespace

VORNA_INITIALIZATION_STAGE(g_exportStartup, "COM apartment, MFStartup and the savers of the export", &StartExport,
                           &StopExport);

}  // namespace tessel
