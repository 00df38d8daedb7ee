// String encodings and decodings: published host objects that turn text into bytes
// and bytes into text (vorna.StringEncodings:string.utf8.enc, vorna.StringDecodings:
// string.utf8.dec, ...). String::SetCString without a decoding uses the UTF-8 decoder.
#pragma once

#include "vorna/datadictionaryobject.h"
#include "vorna/objectuse.h"

namespace vorna {

VORNA_DECLARED_INTERFACE(StreamConversionInterface, DataDictionaryObjectInterface, "vorna.StreamConversionInterface#1", refclass::STRONG,
                         kGetBatchSize, kGetBlockSize, kGetCounterpart, kGetSourceType, kGetDestinationType,
                         kSupportInplaceConversion, kConvertImpl, kConvertToStream, kConvertToStream2,
                         kConvertToReader, kConvertToReader2, kConvertToStream3, kConvertToStream4,
                         kConvertToWriter, kConvertToWriter2);

VORNA_DECLARED_INTERFACE(StringEncodingInterface, StreamConversionInterface, "vorna.StringEncodingInterface#1", refclass::STRONG);

VORNA_DECLARED_INTERFACE(StringDecodingInterface, StreamConversionInterface, "vorna.StringDecodingInterface#1", refclass::STRONG);

extern ObjectUseRecord g_utf8Encoding;
extern ObjectUseRecord g_utf8Decoding;
extern ObjectUseRecord g_utf16Encoding;
extern ObjectUseRecord g_utf16Decoding;
extern ObjectUseRecord g_systemCodePageEncoding;
extern ObjectUseRecord g_systemCodePageDecoding;

// The published coder of record, or a null reference while it is not available.
ObjectInterface GetStringCoder(ObjectUseRecord& record);

inline StringEncodingInterface GetUtf8DefaultEncoder() {
  return StringEncodingInterface(GetStringCoder(g_utf8Encoding).GetPointer());
}
inline StringDecodingInterface GetUtf8DefaultDecoder() {
  return StringDecodingInterface(GetStringCoder(g_utf8Decoding).GetPointer());
}

extern ObjectUseRecord g_StreamConversionBaseClass;

extern InternedId g_streamconversionfactoryflagsIsencoder;
extern InternedId g_streamconversionfactoryflagsIshashalgorithm;
extern InternedId g_streamconversiontestSourcelocation;
extern InternedId g_streamconversiontestConversiontestset;
extern InternedId g_streamconversiontestSrcdata;
extern InternedId g_streamconversiontestComparedata;
extern InternedId g_streamconversiontestForbidsourceduplication;
extern InternedId g_base64OptionsMaxmimelinelength;
extern InternedId g_base64OptionsAddNewline;
extern InternedId g_utftextOptionsEncoding;
extern InternedId g_utftextOptionsDefaultDecoding;
extern InternedId g_utftextOptionsDontwriteheader;

}  // namespace vorna
