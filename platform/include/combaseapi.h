// COM base functions (OLE32.dll): apartments, task memory and GUID text.
#pragma once

#include "unknwn.h"
#include "windows.h"

enum COINIT : DWORD {
  COINIT_MULTITHREADED = 0x0,
  COINIT_APARTMENTTHREADED = 0x2,
  COINIT_DISABLE_OLE1DDE = 0x4,
  COINIT_SPEED_OVER_MEMORY = 0x8,
};

extern "C" {
// Entering and leaving the apartment are counted per thread; the first entry gives
// S_OK, later ones S_FALSE.
TESSEL_PLATFORM_API HRESULT WINAPI CoInitializeEx(LPVOID reserved, DWORD coInit);
TESSEL_PLATFORM_API void WINAPI CoUninitialize();
TESSEL_PLATFORM_API LPVOID WINAPI CoTaskMemAlloc(SIZE_T bytes);
TESSEL_PLATFORM_API LPVOID WINAPI CoTaskMemRealloc(LPVOID memory, SIZE_T bytes);
TESSEL_PLATFORM_API void WINAPI CoTaskMemFree(LPVOID memory);
// The registry form "{XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}" in upper case, in memory
// from CoTaskMemAlloc that the caller frees with CoTaskMemFree.
TESSEL_PLATFORM_API HRESULT WINAPI StringFromCLSID(REFCLSID clsid, LPWSTR* text);
TESSEL_PLATFORM_API int WINAPI StringFromGUID2(REFGUID guid, LPWSTR text, int capacity);
}
