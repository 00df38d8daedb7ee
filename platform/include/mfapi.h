// Media Foundation platform functions (MFPlat.DLL).
#pragma once

#include "windows.h"

inline constexpr ULONG MF_SDK_VERSION = 0x0002;
inline constexpr ULONG MF_API_VERSION = 0x0070;
inline constexpr ULONG MF_VERSION = (MF_SDK_VERSION << 16 | MF_API_VERSION);
inline constexpr DWORD MFSTARTUP_NOSOCKET = 0x1;
inline constexpr DWORD MFSTARTUP_LITE = MFSTARTUP_NOSOCKET;
inline constexpr DWORD MFSTARTUP_FULL = 0;

extern "C" {
TESSEL_PLATFORM_API HRESULT WINAPI MFStartup(ULONG version, DWORD flags);
TESSEL_PLATFORM_API HRESULT WINAPI MFShutdown();
}
