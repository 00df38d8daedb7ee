// LocalAlloc and LocalFree: the heap that FormatMessageW and _com_error use.
#include <cstdlib>
#include <cstring>

#include "windows.h"

extern "C" HLOCAL WINAPI LocalAlloc(UINT flags, SIZE_T bytes) {
  void* memory = std::malloc(bytes == 0 ? 1 : bytes);
  if (!memory) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return nullptr;
  }
  if (flags & LMEM_ZEROINIT) std::memset(memory, 0, bytes);
  return memory;
}

extern "C" HLOCAL WINAPI LocalFree(HLOCAL memory) {
  std::free(memory);
  return nullptr;
}
