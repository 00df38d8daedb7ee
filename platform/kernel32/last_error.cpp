// The per-thread last error of the Win32 functions.
#include "windows.h"

namespace {
thread_local DWORD t_lastError = 0;
}

extern "C" DWORD WINAPI GetLastError() { return t_lastError; }
extern "C" void WINAPI SetLastError(DWORD error) { t_lastError = error; }
