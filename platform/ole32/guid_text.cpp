// StringFromCLSID and StringFromGUID2: a GUID in its registry form.
#include <cstdio>

#include "combaseapi.h"

namespace {

constexpr int kRegistryFormLength = 38;  // {8-4-4-4-12} without the terminator

void Format(REFGUID guid, WCHAR* text) {
  char narrow[kRegistryFormLength + 1];
  std::snprintf(narrow, sizeof narrow, "{%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X}", guid.Data1, guid.Data2,
                guid.Data3, guid.Data4[0], guid.Data4[1], guid.Data4[2], guid.Data4[3], guid.Data4[4], guid.Data4[5],
                guid.Data4[6], guid.Data4[7]);
  for (int i = 0; i <= kRegistryFormLength; ++i) text[i] = static_cast<WCHAR>(narrow[i]);
}

}  // namespace

extern "C" HRESULT WINAPI StringFromCLSID(REFCLSID clsid, LPWSTR* text) {
  if (!text) return E_INVALIDARG;
  *text = static_cast<LPWSTR>(CoTaskMemAlloc((kRegistryFormLength + 1) * sizeof(WCHAR)));
  if (!*text) return E_OUTOFMEMORY;
  Format(clsid, *text);
  return S_OK;
}

extern "C" int WINAPI StringFromGUID2(REFGUID guid, LPWSTR text, int capacity) {
  if (!text || capacity < kRegistryFormLength + 1) return 0;
  Format(guid, text);
  return kRegistryFormLength + 1;
}
