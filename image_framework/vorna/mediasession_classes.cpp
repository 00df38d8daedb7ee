// The classes of the media session that converters, streams and audio objects are built
// on, as published objects.
#include "vorna/translationunit.h"

#include "vorna/audioobject.h"
#include "vorna/mediasession_output.h"
#include "vorna/mediasession_stream.h"

namespace vorna {

VORNA_DEFINE_OBJECT_USE(g_AudioObjectClass, "vorna.AudioObjectClass");
VORNA_DEFINE_OBJECT_USE(g_MediaBaseClass, "vorna.MediaBaseClass");
VORNA_DEFINE_OBJECT_USE(g_MediaSessionObject, "vorna.MediaSessionObject");
VORNA_DEFINE_OBJECT_USE(g_MediaSessionProgressObject, "vorna.MediaSessionProgressObject");
VORNA_DEFINE_OBJECT_USE(g_MediaConverterBaseClass, "vorna.MediaConverterBaseClass");
VORNA_DEFINE_OBJECT_USE(g_MediaOutputBaseClass, "vorna.MediaOutputBaseClass");
VORNA_DEFINE_OBJECT_USE(g_MediaOutputTextureClass, "vorna.MediaOutputTextureClass");
VORNA_DEFINE_OBJECT_USE(g_MediaOutputUrlBaseClass, "vorna.MediaOutputUrlBaseClass");
VORNA_DEFINE_OBJECT_USE(g_MediaStreamAudioDataExportClass, "vorna.MediaStreamAudioDataExportClass");
VORNA_DEFINE_OBJECT_USE(g_MediaStreamAudioDataImportClass, "vorna.MediaStreamAudioDataImportClass");
VORNA_DEFINE_OBJECT_USE(g_MediaStreamBaseClass, "vorna.MediaStreamBaseClass");
VORNA_DEFINE_OBJECT_USE(g_MediaStreamExifDataClass, "vorna.MediaStreamExifDataClass");
VORNA_DEFINE_OBJECT_USE(g_MediaStreamFormatClass, "vorna.MediaStreamFormatClass");
VORNA_DEFINE_OBJECT_USE(g_MediaStreamForwardImageDataStreamsImportClass, "vorna.MediaStreamForwardImageDataStreamsImportClass");
VORNA_DEFINE_OBJECT_USE(g_MediaStreamImageBaseClass, "vorna.MediaStreamImageBaseClass");
VORNA_DEFINE_OBJECT_USE(g_MediaStreamImageDataExportClass, "vorna.MediaStreamImageDataExportClass");
VORNA_DEFINE_OBJECT_USE(g_MediaStreamImageDataImportClass, "vorna.MediaStreamImageDataImportClass");
VORNA_DEFINE_OBJECT_USE(g_MediaStreamPropertiesClass, "vorna.MediaStreamPropertiesClass");

}  // namespace vorna
