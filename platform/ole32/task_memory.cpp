// CoTaskMemAlloc and its partners: the memory COM hands across interfaces.
#include <cstdlib>

#include "combaseapi.h"

extern "C" LPVOID WINAPI CoTaskMemAlloc(SIZE_T bytes) { return std::malloc(bytes == 0 ? 1 : bytes); }

extern "C" LPVOID WINAPI CoTaskMemRealloc(LPVOID memory, SIZE_T bytes) {
  return std::realloc(memory, bytes == 0 ? 1 : bytes);
}

extern "C" void WINAPI CoTaskMemFree(LPVOID memory) { std::free(memory); }
