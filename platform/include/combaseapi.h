// COM base functions (OLE32.dll): apartments, task memory and GUID text.
#pragma once

#include <type_traits>

#include "unknwn.h"
#include "windows.h"

// IID_PPV_ARGS(&pointer): the IID of the pointer's interface and the slot as void**, the
// two arguments of QueryInterface and of the calls that hand out an interface by IID.
template <typename T>
void** IID_PPV_ARGS_Helper(T** pp) {
  static_assert(std::is_base_of_v<IUnknown, T>, "IID_PPV_ARGS needs an interface pointer");
  return reinterpret_cast<void**>(pp);
}
#define IID_PPV_ARGS(pp) \
  InterfaceIidOf<std::remove_cv_t<std::remove_reference_t<decltype(**(pp))>>>::value, IID_PPV_ARGS_Helper(pp)

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
