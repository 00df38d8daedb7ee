// UTF-8 and UTF-16 to and from code points. Ill-formed input becomes U+FFFD.
#pragma once

#include <string>

#include "vorna/basearray.h"

namespace vorna::host {

Bool DecodeUtf8(const Char* text, Int length, BaseArray<Utf32Char>& out);
Bool DecodeUtf16(const Utf16Char* text, Int length, BaseArray<Utf32Char>& out);
Bool EncodeUtf8(const Utf32Char* text, Int length, BaseArray<Char>& out);
Bool EncodeUtf16(const Utf32Char* text, Int length, BaseArray<Utf16Char>& out);

}  // namespace vorna::host
