// The one conversion of a platform status into a host Result, and whole numbers out of
// a PROPVARIANT. Header code of the module side: it needs the platform's headers, so
// only libraries that link the platform include it. Every converted failure carries
// this header's location, line 37, and the message "Error 0x@{x}: @".
#pragma once

#include <comdef.h>
#include <propidl.h>

#include "vorna/errorbase.h"
#include "vorna/formatstring.h"

namespace vorna {

inline constexpr SourceLocation WIN_COM_CHECK_LOCATION{"../../../frameworks/core.framework/source/vorna/win_com", 37, 0};
inline constexpr SourceLocation WIN_COM_ARGUMENT_LOCATION{"../../../frameworks/core.framework/source/vorna/win_com", 76, 0};

// GUIDs in messages: the registry form with braces in upper case; a null address
// gives "nullptr".
template <>
struct FormatConverterOf<GUID> {
  static void Convert(String& out, const void* value, const FormatStatement*) {
    if (!value) {
      out.Reset();
      (void)out.SetCString("nullptr");
      return;
    }
    out = StringConversion::_table.GuidToString(value, 1, 1, 0);
  }
};

// The failure path of CheckHResult: the status's text in an illegal-state error.
[[gnu::noinline, gnu::cold]] inline ErrorResult RaiseHResultError(HRESULT hr) {
  _com_error error(hr, nullptr, false);
  const WCHAR* text = error.ErrorMessage();
  String message;
  if (text) (void)message.SetUtf16(text, -1);
  Int32 status = hr;
  String formatted = FormatToString("Error 0x@{x}: @", status, message);
  return RaiseError(g_IllegalStateErrorObject, WIN_COM_CHECK_LOCATION, &formatted);
}

// Success for any status that is not negative; nothing else is done on that path.
inline Result<void> CheckHResult(HRESULT hr) {
  if (hr >= 0) return OK;
  return RaiseHResultError(hr);
}

// VT_I8 and VT_UI8 as their 64 bits, VT_INT widened with sign, VT_UINT with zero;
// any other type is an illegal argument.
inline Result<Int64> PropVariantToInt64(const PROPVARIANT& value) {
  switch (value.vt) {
    case VT_I8: return Int64(value.hVal.QuadPart);
    case VT_UI8: return Int64(value.uhVal.QuadPart);
    case VT_INT: return Int64(value.intVal);
    case VT_UINT: return Int64(value.uintVal);
    default: return RaiseError(g_IllegalArgumentErrorObject, WIN_COM_ARGUMENT_LOCATION);
  }
}

}  // namespace vorna
