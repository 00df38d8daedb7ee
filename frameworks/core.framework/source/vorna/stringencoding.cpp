#include "vorna/translationunit.h"

#include "vorna/stringencoding.h"
#include "vorna/resourceid.h"

namespace vorna {

VORNA_DEFINE_INTERFACE(StreamConversionInterface, &DataDictionaryObjectInterface::_record);
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

VORNA_DEFINE_OBJECT_USE(g_StreamConversionBaseClass, "vorna.StreamConversionBaseClass");

VORNA_DEFINE_OBJECT_USE(g_stringEncodingsStringBit8Enc, "vorna.StringEncodings:string.bit8.enc");
VORNA_DEFINE_OBJECT_USE(g_stringEncodingsStringHex7Enc, "vorna.StringEncodings:string.hex7.enc");
VORNA_DEFINE_OBJECT_USE(g_stringEncodingsStringUrlEnc, "vorna.StringEncodings:string.url.enc");
VORNA_DEFINE_OBJECT_USE(g_stringEncodingsStringUrl32Enc, "vorna.StringEncodings:string.url32.enc");
VORNA_DEFINE_OBJECT_USE(g_stringEncodingsStringUrlpathEnc, "vorna.StringEncodings:string.urlpath.enc");
VORNA_DEFINE_OBJECT_USE(g_stringEncodingsStringUrlqueryEnc, "vorna.StringEncodings:string.urlquery.enc");
VORNA_DEFINE_OBJECT_USE(g_stringEncodingsStringCodepage437Enc, "vorna.StringEncodings:string.codepage437.enc");
VORNA_DEFINE_OBJECT_USE(g_stringDecodingsStringBit8Dec, "vorna.StringDecodings:string.bit8.dec");
VORNA_DEFINE_OBJECT_USE(g_stringDecodingsStringHex7Dec, "vorna.StringDecodings:string.hex7.dec");
VORNA_DEFINE_OBJECT_USE(g_stringDecodingsStringUrlDec, "vorna.StringDecodings:string.url.dec");
VORNA_DEFINE_OBJECT_USE(g_stringDecodingsStringUrl32Dec, "vorna.StringDecodings:string.url32.dec");
VORNA_DEFINE_OBJECT_USE(g_stringDecodingsStringUrlpathDec, "vorna.StringDecodings:string.urlpath.dec");
VORNA_DEFINE_OBJECT_USE(g_stringDecodingsStringUrlqueryDec, "vorna.StringDecodings:string.urlquery.dec");
VORNA_DEFINE_OBJECT_USE(g_stringDecodingsStringCodepage437Dec, "vorna.StringDecodings:string.codepage437.dec");
VORNA_DEFINE_OBJECT_USE(g_streamConversionsStringSystemcodepageEnc, "vorna.StreamConversions:string.systemcodepage.enc");
VORNA_DEFINE_OBJECT_USE(g_streamConversionsStringSystemcodepageDec, "vorna.StreamConversions:string.systemcodepage.dec");
VORNA_DEFINE_OBJECT_USE(g_streamConversionsStringBit8Enc, "vorna.StreamConversions:string.bit8.enc");
VORNA_DEFINE_OBJECT_USE(g_streamConversionsStringBit8Dec, "vorna.StreamConversions:string.bit8.dec");
VORNA_DEFINE_OBJECT_USE(g_streamConversionsStringHex7Enc, "vorna.StreamConversions:string.hex7.enc");
VORNA_DEFINE_OBJECT_USE(g_streamConversionsStringHex7Dec, "vorna.StreamConversions:string.hex7.dec");
VORNA_DEFINE_OBJECT_USE(g_streamConversionsStringUtf8Enc, "vorna.StreamConversions:string.utf8.enc");
VORNA_DEFINE_OBJECT_USE(g_streamConversionsStringUtf8Dec, "vorna.StreamConversions:string.utf8.dec");
VORNA_DEFINE_OBJECT_USE(g_streamConversionsStringUtf16Enc, "vorna.StreamConversions:string.utf16.enc");
VORNA_DEFINE_OBJECT_USE(g_streamConversionsStringUtf16Dec, "vorna.StreamConversions:string.utf16.dec");
VORNA_DEFINE_OBJECT_USE(g_streamConversionsStringUrlEnc, "vorna.StreamConversions:string.url.enc");
VORNA_DEFINE_OBJECT_USE(g_streamConversionsStringUrlDec, "vorna.StreamConversions:string.url.dec");
VORNA_DEFINE_OBJECT_USE(g_streamConversionsStringUrl32Enc, "vorna.StreamConversions:string.url32.enc");
VORNA_DEFINE_OBJECT_USE(g_streamConversionsStringUrl32Dec, "vorna.StreamConversions:string.url32.dec");
VORNA_DEFINE_OBJECT_USE(g_streamConversionsStringUrlpathEnc, "vorna.StreamConversions:string.urlpath.enc");
VORNA_DEFINE_OBJECT_USE(g_streamConversionsStringUrlpathDec, "vorna.StreamConversions:string.urlpath.dec");
VORNA_DEFINE_OBJECT_USE(g_streamConversionsStringUrlqueryEnc, "vorna.StreamConversions:string.urlquery.enc");
VORNA_DEFINE_OBJECT_USE(g_streamConversionsStringUrlqueryDec, "vorna.StreamConversions:string.urlquery.dec");
VORNA_DEFINE_OBJECT_USE(g_streamConversionsStringCodepage437Enc, "vorna.StreamConversions:string.codepage437.enc");
VORNA_DEFINE_OBJECT_USE(g_streamConversionsStringCodepage437Dec, "vorna.StreamConversions:string.codepage437.dec");
VORNA_DEFINE_OBJECT_USE(g_streamConversionsBase64Enc, "vorna.StreamConversions:base64.enc");
VORNA_DEFINE_OBJECT_USE(g_streamConversionsBase64Dec, "vorna.StreamConversions:base64.dec");
VORNA_DEFINE_OBJECT_USE(g_streamConversionsUtftextEnc, "vorna.StreamConversions:utftext.enc");
VORNA_DEFINE_OBJECT_USE(g_streamConversionsUtftextDec, "vorna.StreamConversions:utftext.dec");
VORNA_DEFINE_OBJECT_USE(g_streamConversionsHexEnc, "vorna.StreamConversions:hex.enc");
VORNA_DEFINE_OBJECT_USE(g_streamConversionsHexDec, "vorna.StreamConversions:hex.dec");

VORNA_DEFINE_RESOURCE_ID(g_streamconversionfactoryflagsIsencoder, "vorna.streamconversionfactoryflags.isencoder");
VORNA_DEFINE_RESOURCE_ID(g_streamconversionfactoryflagsIshashalgorithm, "vorna.streamconversionfactoryflags.ishashalgorithm");
VORNA_DEFINE_RESOURCE_ID(g_streamconversiontestSourcelocation, "vorna.streamconversiontest.sourcelocation");
VORNA_DEFINE_RESOURCE_ID(g_streamconversiontestConversiontestset, "vorna.streamconversiontest.conversiontestset");
VORNA_DEFINE_RESOURCE_ID(g_streamconversiontestSrcdata, "vorna.streamconversiontest.srcdata");
VORNA_DEFINE_RESOURCE_ID(g_streamconversiontestComparedata, "vorna.streamconversiontest.comparedata");
VORNA_DEFINE_RESOURCE_ID(g_streamconversiontestForbidsourceduplication, "vorna.streamconversiontest.forbidsourceduplication");
VORNA_DEFINE_RESOURCE_ID(g_base64OptionsMaxmimelinelength, "vorna.base64_options.maxmimelinelength");
VORNA_DEFINE_RESOURCE_ID(g_base64OptionsAddNewline, "vorna.base64_options.add_newline");
VORNA_DEFINE_RESOURCE_ID(g_utftextOptionsEncoding, "vorna.utftext_options.encoding");
VORNA_DEFINE_RESOURCE_ID(g_utftextOptionsDefaultDecoding, "vorna.utftext_options.default_decoding");
VORNA_DEFINE_RESOURCE_ID(g_utftextOptionsDontwriteheader, "vorna.utftext_options.dontwriteheader");

}  // namespace vorna
