// CoInitializeEx and CoUninitialize: a per-thread count of apartment entries. Nothing
// here needs an apartment, so the count only decides between S_OK and S_FALSE.
#include "combaseapi.h"

namespace {
thread_local int t_entries = 0;
}

extern "C" HRESULT WINAPI CoInitializeEx(LPVOID /*reserved*/, DWORD /*coInit*/) {
  return t_entries++ == 0 ? S_OK : S_FALSE;
}

extern "C" void WINAPI CoUninitialize() {
  if (t_entries > 0) --t_entries;
}
