#include "vorna/translationunit.h"

#include "vorna/gfx_image_pixelformats.h"

namespace vorna {

VORNA_DEFINE_INTERFACE(PixelFormatInterface, &ObjectInterface::_record);

VORNA_DEFINE_OBJECT_USE(g_pixelFormatBGRu8, "vorna.PixelFormats.BGR:u8");
VORNA_DEFINE_OBJECT_USE(g_pixelFormatBGRu555, "vorna.PixelFormats.BGR:u555");
VORNA_DEFINE_OBJECT_USE(g_pixelFormatBGRu565, "vorna.PixelFormats.BGR:u565");
VORNA_DEFINE_OBJECT_USE(g_pixelFormatBGRAu8, "vorna.PixelFormats.BGRA:u8");
VORNA_DEFINE_OBJECT_USE(g_pixelFormatBGRXu8, "vorna.PixelFormats.BGRX:u8");
VORNA_DEFINE_OBJECT_USE(g_pixelFormatRGBu8, "vorna.PixelFormats.RGB:u8");
VORNA_DEFINE_OBJECT_USE(g_pixelFormatRGBAu8, "vorna.PixelFormats.RGBA:u8");
VORNA_DEFINE_OBJECT_USE(g_pixelFormatYUVi422a, "vorna.PixelFormats.YUV:i422a");
VORNA_DEFINE_OBJECT_USE(g_pixelFormatYUVi422b, "vorna.PixelFormats.YUV:i422b");

PixelFormat GetPixelFormat(ObjectUseRecord& record) {
  static void* const none = nullptr;
  return PixelFormat(PixelFormatInterface(*static_cast<void* const*>(LookupObjectValue(record, &none))));
}

VORNA_DEFINE_INTERFACE(PixelFormatGroupInterface, &ObjectInterface::_record);

VORNA_DEFINE_INTERFACE(PixelFormatDynamicInterface, &PixelFormatInterface::_record);

VORNA_DEFINE_INTERFACE(PixelFormatIndexedColorInterface, &PixelFormatInterface::_record);

VORNA_DEFINE_DECLARED_STATIC_INTERFACE(PixelFormatsInterface, nullptr);

VORNA_DEFINE_OBJECT_USE(g_PixelFormatBaseClass, "vorna.PixelFormatBaseClass");

}  // namespace vorna
