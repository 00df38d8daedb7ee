#include "vorna/translationunit.h"

#include "vorna/fileformat.h"

namespace vorna {

VORNA_DEFINE_DECLARED_STATIC_INTERFACE(FileFormatDetectionInterface, nullptr);

VORNA_DEFINE_OBJECT_USE(g_FileFormatBaseClass, "vorna.FileFormatBaseClass");
VORNA_DEFINE_OBJECT_USE(g_FileFormatImageBaseClass, "vorna.FileFormatImageBaseClass");

VORNA_DEFINE_OBJECT_USE(g_fileFormatsBrowsable, "vorna.FileFormats:browsable");
VORNA_DEFINE_OBJECT_USE(g_fileFormatsFile, "vorna.FileFormats:file");
VORNA_DEFINE_OBJECT_USE(g_fileFormatsVornaDocumentBinary, "vorna.FileFormats:vornaDocumentBinary");
VORNA_DEFINE_OBJECT_USE(g_fileFormatsVornaDocumentJson, "vorna.FileFormats:vornaDocumentJson");
VORNA_DEFINE_OBJECT_USE(g_fileFormatsVornaDocumentXml, "vorna.FileFormats:vornaDocumentXml");
VORNA_DEFINE_OBJECT_USE(g_fileFormatsImageJpg, "vorna.FileFormats:image.jpg");
VORNA_DEFINE_OBJECT_USE(g_fileFormatsImageBmp, "vorna.FileFormats:image.bmp");
VORNA_DEFINE_OBJECT_USE(g_fileFormatsImageIff, "vorna.FileFormats:image.iff");
VORNA_DEFINE_OBJECT_USE(g_fileFormatsImageIco, "vorna.FileFormats:image.ico");
VORNA_DEFINE_OBJECT_USE(g_fileFormatsImagePng, "vorna.FileFormats:image.png");
VORNA_DEFINE_OBJECT_USE(g_fileFormatsImageTiff, "vorna.FileFormats:image.tiff");
VORNA_DEFINE_OBJECT_USE(g_fileFormatsImageHdr, "vorna.FileFormats:image.hdr");
VORNA_DEFINE_OBJECT_USE(g_fileFormatsImagePict, "vorna.FileFormats:image.pict");
VORNA_DEFINE_OBJECT_USE(g_fileFormatsImagePsd, "vorna.FileFormats:image.psd");
VORNA_DEFINE_OBJECT_USE(g_fileFormatsImagePsb, "vorna.FileFormats:image.psb");
VORNA_DEFINE_OBJECT_USE(g_fileFormatsImageTga, "vorna.FileFormats:image.tga");
VORNA_DEFINE_OBJECT_USE(g_fileFormatsImageRla, "vorna.FileFormats:image.rla");
VORNA_DEFINE_OBJECT_USE(g_fileFormatsImageRpf, "vorna.FileFormats:image.rpf");
VORNA_DEFINE_OBJECT_USE(g_fileFormatsImageGif, "vorna.FileFormats:image.gif");
VORNA_DEFINE_OBJECT_USE(g_fileFormatsImageDds, "vorna.FileFormats:image.dds");
VORNA_DEFINE_OBJECT_USE(g_fileFormatsImageDpx, "vorna.FileFormats:image.dpx");
VORNA_DEFINE_OBJECT_USE(g_fileFormatsMovieImagesequence, "vorna.FileFormats:movie.imagesequence");
VORNA_DEFINE_OBJECT_USE(g_fileFormatsAudioWav, "vorna.FileFormats:audio.wav");
VORNA_DEFINE_OBJECT_USE(g_fileFormatsAudioAiff, "vorna.FileFormats:audio.aiff");
VORNA_DEFINE_OBJECT_USE(g_fileFormatHandlersGenericFile, "vorna.FileFormatHandlers:genericFile");
VORNA_DEFINE_OBJECT_USE(g_fileFormatHandlersBrowsable, "vorna.FileFormatHandlers:browsable");
VORNA_DEFINE_OBJECT_USE(g_fileFormatHandlersVornaDocumentBinaryHandler, "vorna.FileFormatHandlers:vornaDocumentBinaryHandler");
VORNA_DEFINE_OBJECT_USE(g_fileFormatHandlersVornaDocumentJsonHandler, "vorna.FileFormatHandlers:vornaDocumentJsonHandler");
VORNA_DEFINE_OBJECT_USE(g_fileFormatHandlersVornaDocumentXmlHandler, "vorna.FileFormatHandlers:vornaDocumentXmlHandler");
VORNA_DEFINE_OBJECT_USE(g_fileFormatHandlersImageJpg, "vorna.FileFormatHandlers:image.jpg");
VORNA_DEFINE_OBJECT_USE(g_fileFormatHandlersImageBmp, "vorna.FileFormatHandlers:image.bmp");
VORNA_DEFINE_OBJECT_USE(g_fileFormatHandlersImageIff, "vorna.FileFormatHandlers:image.iff");
VORNA_DEFINE_OBJECT_USE(g_fileFormatHandlersImageIco, "vorna.FileFormatHandlers:image.ico");
VORNA_DEFINE_OBJECT_USE(g_fileFormatHandlersImagePng, "vorna.FileFormatHandlers:Image.png");
VORNA_DEFINE_OBJECT_USE(g_fileFormatHandlersImageTiff, "vorna.FileFormatHandlers:Image.tiff");
VORNA_DEFINE_OBJECT_USE(g_fileFormatHandlersImageHdr, "vorna.FileFormatHandlers:image.hdr");
VORNA_DEFINE_OBJECT_USE(g_fileFormatHandlersImagePict, "vorna.FileFormatHandlers:image.pict");
VORNA_DEFINE_OBJECT_USE(g_fileFormatHandlersImagePsd, "vorna.FileFormatHandlers:image.psd");
VORNA_DEFINE_OBJECT_USE(g_fileFormatHandlersImagePsb, "vorna.FileFormatHandlers:image.psb");
VORNA_DEFINE_OBJECT_USE(g_fileFormatHandlersMovieImagesequence, "vorna.FileFormatHandlers:movie.imagesequence");
VORNA_DEFINE_OBJECT_USE(g_fileFormatHandlersAudioWav, "vorna.FileFormatHandlers:audio.wav");
VORNA_DEFINE_OBJECT_USE(g_fileFormatHandlersAudioAiff, "vorna.FileFormatHandlers:audio.aiff");
VORNA_DEFINE_OBJECT_USE(g_imageSaversDds, "vorna.ImageSavers:dds");
VORNA_DEFINE_OBJECT_USE(g_imageSaversPng, "vorna.ImageSavers:png");
VORNA_DEFINE_OBJECT_USE(g_imageSaversBmp, "vorna.ImageSavers:bmp");
VORNA_DEFINE_OBJECT_USE(g_imageSaversOpenexr, "vorna.ImageSavers:openexr");
VORNA_DEFINE_OBJECT_USE(g_imageSaversJpg, "vorna.ImageSavers:jpg");
VORNA_DEFINE_OBJECT_USE(g_imageSaversTif, "vorna.ImageSavers:tif");
VORNA_DEFINE_OBJECT_USE(g_imageSaversPsd, "vorna.ImageSavers:psd");
VORNA_DEFINE_OBJECT_USE(g_imageSaversPsb, "vorna.ImageSavers:psb");
VORNA_DEFINE_OBJECT_USE(g_imageSaversIff, "vorna.ImageSavers:iff");
VORNA_DEFINE_OBJECT_USE(g_imageSaversTga, "vorna.ImageSavers:tga");
VORNA_DEFINE_OBJECT_USE(g_imageSaversHdr, "vorna.ImageSavers:hdr");
VORNA_DEFINE_OBJECT_USE(g_imageSaversPict, "vorna.ImageSavers:pict");
VORNA_DEFINE_OBJECT_USE(g_imageSaversDpx, "vorna.ImageSavers:dpx");
VORNA_DEFINE_OBJECT_USE(g_imageSaversRla, "vorna.ImageSavers:rla");
VORNA_DEFINE_OBJECT_USE(g_imageSaversRpf, "vorna.ImageSavers:rpf");

}  // namespace vorna
