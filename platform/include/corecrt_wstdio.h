// The C runtime's wide formatter behind swprintf_s, for UTF-16 text.
#pragma once

#include <cstdarg>

#include "windows.h"

using _locale_t = void*;

extern "C" {
// Writes at most count wide characters including the terminator. Understands %d, %i,
// %u, %x, %X, %s (a UTF-16 string) and %%, with the flags '0' and '-', a width and the
// size prefixes l, ll and I64. Returns the length written, or -1 with the buffer
// emptied if it did not fit.
TESSEL_PLATFORM_API int __stdio_common_vswprintf_s(uint64_t options, WCHAR* buffer, size_t count,
                                                   const WCHAR* format, _locale_t locale, va_list args);
}

inline int swprintf_s(WCHAR* buffer, size_t count, const WCHAR* format, ...) {
  va_list args;
  va_start(args, format);
  int written = __stdio_common_vswprintf_s(0, buffer, count, format, nullptr, args);
  va_end(args);
  return written;
}
