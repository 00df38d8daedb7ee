#include "vorna/translationunit.h"

#include "vorna/stringencoding.h"

namespace vorna {

VORNA_DEFINE_INTERFACE(StreamConversionInterface, &ObjectInterface::_record);
VORNA_DEFINE_INTERFACE(StringEncodingInterface, &StreamConversionInterface::_record);
VORNA_DEFINE_INTERFACE(StringDecodingInterface, &StreamConversionInterface::_record);

VORNA_DEFINE_OBJECT_USE(g_utf8Encoding, "vorna.StringEncodings:string.utf8.enc");
VORNA_DEFINE_OBJECT_USE(g_utf8Decoding, "vorna.StringDecodings:string.utf8.dec");
VORNA_DEFINE_OBJECT_USE(g_utf16Encoding, "vorna.StringEncodings:string.utf16.enc");
VORNA_DEFINE_OBJECT_USE(g_utf16Decoding, "vorna.StringDecodings:string.utf16.dec");
VORNA_DEFINE_OBJECT_USE(g_systemCodePageEncoding, "vorna.StringEncodings:string.systemcodepage.enc");
VORNA_DEFINE_OBJECT_USE(g_systemCodePageDecoding, "vorna.StringDecodings:string.systemcodepage.dec");

ObjectInterface GetStringCoder(ObjectUseRecord& record) {
  static void* const none = nullptr;
  return ObjectInterface(*static_cast<void* const*>(LookupObjectValue(record, &none)));
}

}  // namespace vorna
