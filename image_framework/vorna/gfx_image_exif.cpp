#include "vorna/translationunit.h"

#include "vorna/gfx_image_exif.h"

namespace vorna {

VORNA_DEFINE_INTERFACE(ExifInterface, &DataDictionaryObjectInterface::_record);

VORNA_DEFINE_DECLARED_STATIC_INTERFACE(ExifStaticInterface, &DeclaredFallback<ExifStaticInterface>);

}  // namespace vorna
