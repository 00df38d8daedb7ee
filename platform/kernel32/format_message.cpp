// FormatMessageW over the system message table.
#include <cstring>

#include "kernel32/message_table.h"
#include "windows.h"

namespace {

size_t Length(const char16_t* text) {
  size_t n = 0;
  while (text[n] != 0) ++n;
  return n;
}

}  // namespace

extern "C" DWORD WINAPI FormatMessageW(DWORD flags, LPCVOID /*source*/, DWORD messageId, DWORD /*languageId*/,
                                       LPWSTR buffer, DWORD size, va_list* /*arguments*/) {
  if (!buffer || !(flags & FORMAT_MESSAGE_FROM_SYSTEM)) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return 0;
  }
  const char16_t* text = tessel::platform::FindSystemMessage(messageId);
  if (!text) {
    SetLastError(ERROR_MR_MID_NOT_FOUND);
    return 0;
  }
  size_t length = Length(text);
  LPWSTR target = buffer;
  if (flags & FORMAT_MESSAGE_ALLOCATE_BUFFER) {
    target = static_cast<LPWSTR>(LocalAlloc(0, (length + 1) * sizeof(WCHAR)));
    if (!target) return 0;
    *reinterpret_cast<LPWSTR*>(buffer) = target;
  } else if (size < length + 1) {
    SetLastError(ERROR_INSUFFICIENT_BUFFER);
    return 0;
  }
  std::memcpy(target, text, (length + 1) * sizeof(WCHAR));
  return static_cast<DWORD>(length);
}
