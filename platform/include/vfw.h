// Video for Windows (AVIFIL32.dll, MSVFW32.dll).
#pragma once

#include "windows.h"

extern "C" {
TESSEL_PLATFORM_API void WINAPI AVIFileInit();
TESSEL_PLATFORM_API void WINAPI AVIFileExit();
}
