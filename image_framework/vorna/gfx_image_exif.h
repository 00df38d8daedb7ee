// Exif data of images: the object that holds a dictionary of it, and the static
// interface that reads and writes it, which answers without a host through its
// fallback and gives nothing.
#pragma once

#include "vorna/datadictionaryobject.h"

namespace vorna {

VORNA_DECLARED_INTERFACE(ExifInterface, DataDictionaryObjectInterface, "vorna.ExifInterface#1", refclass::STRONG,
                         kGetExifDictionary);

VORNA_DECLARED_STATIC_INTERFACE(ExifStaticInterface, "vorna.ExifStaticInterface#1", 2);

}  // namespace vorna
