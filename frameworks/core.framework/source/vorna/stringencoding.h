// String encodings and decodings: published host objects that turn text into bytes
// and bytes into text (vorna.StringEncodings:string.utf8.enc, vorna.StringDecodings:
// string.utf8.dec, ...). String::SetCString without a decoding uses the UTF-8 decoder.
#pragma once

#include "vorna/objectbase.h"
#include "vorna/objectuse.h"

namespace vorna {

class StreamConversionInterface : public ObjectInterface {
 public:
  static constexpr const Char* ID = "vorna.StreamConversionInterface#1";
  static constexpr Int COUNT = 15;
  static constexpr UInt32 REFCLASS = refclass::STRONG;
  static InterfaceRecord _record;
  using ObjectInterface::ObjectInterface;
};

class StringEncodingInterface : public StreamConversionInterface {
 public:
  static constexpr const Char* ID = "vorna.StringEncodingInterface#1";
  static constexpr Int COUNT = 0;
  static InterfaceRecord _record;
  using StreamConversionInterface::StreamConversionInterface;
};

class StringDecodingInterface : public StreamConversionInterface {
 public:
  static constexpr const Char* ID = "vorna.StringDecodingInterface#1";
  static constexpr Int COUNT = 0;
  static InterfaceRecord _record;
  using StreamConversionInterface::StreamConversionInterface;
};

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

}  // namespace vorna
