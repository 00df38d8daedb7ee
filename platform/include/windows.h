// The Win32 subset the module is written against: basic types, status codes and the
// KERNEL32 functions it calls. Wide text is UTF-16 (char16_t).
#pragma once

#include <cstddef>
#include <cstdint>

#include "guiddef.h"
#include "tessel_platform_api.h"
#include "winerror.h"

using BYTE = uint8_t;
using WORD = uint16_t;
using DWORD = uint32_t;
using DWORDLONG = uint64_t;
using ULONGLONG = uint64_t;
using LONGLONG = int64_t;
using LONG = int32_t;
using ULONG = uint32_t;
using UINT = uint32_t;
using INT = int32_t;
using UINT8 = uint8_t;
using UINT32 = uint32_t;
using UINT64 = uint64_t;
using INT32 = int32_t;
using INT64 = int64_t;
using QWORD = uint64_t;
using BOOL = int32_t;
using BOOLEAN = uint8_t;
using WCHAR = char16_t;
using LPWSTR = WCHAR*;
using LPCWSTR = const WCHAR*;
using LPSTR = char*;
using LPCSTR = const char*;
using LPVOID = void*;
using LPCVOID = const void*;
using HANDLE = void*;
using HWND = void*;
using SIZE_T = size_t;
using LONG_PTR = intptr_t;
using ULONG_PTR = uintptr_t;
using DWORD_PTR = uintptr_t;

#ifndef TRUE
#define TRUE 1
#define FALSE 0
#endif

struct OSVERSIONINFOEXW {
  DWORD dwOSVersionInfoSize;
  DWORD dwMajorVersion;
  DWORD dwMinorVersion;
  DWORD dwBuildNumber;
  DWORD dwPlatformId;
  WCHAR szCSDVersion[128];
  WORD wServicePackMajor;
  WORD wServicePackMinor;
  WORD wSuiteMask;
  BYTE wProductType;
  BYTE wReserved;
};
using LPOSVERSIONINFOEXW = OSVERSIONINFOEXW*;

inline constexpr DWORD VER_MINORVERSION = 0x0000001;
inline constexpr DWORD VER_MAJORVERSION = 0x0000002;
inline constexpr DWORD VER_BUILDNUMBER = 0x0000004;
inline constexpr DWORD VER_PLATFORMID = 0x0000008;
inline constexpr DWORD VER_SERVICEPACKMINOR = 0x0000010;
inline constexpr DWORD VER_SERVICEPACKMAJOR = 0x0000020;
inline constexpr BYTE VER_EQUAL = 1;
inline constexpr BYTE VER_GREATER = 2;
inline constexpr BYTE VER_GREATER_EQUAL = 3;
inline constexpr BYTE VER_LESS = 4;
inline constexpr BYTE VER_LESS_EQUAL = 5;
inline constexpr DWORD ERROR_OLD_WIN_VERSION = 1150;

extern "C" {
TESSEL_PLATFORM_API ULONGLONG WINAPI VerSetConditionMask(ULONGLONG conditionMask, DWORD typeMask,
                                                         BYTE condition);
TESSEL_PLATFORM_API BOOL WINAPI VerifyVersionInfoW(LPOSVERSIONINFOEXW versionInfo, DWORD typeMask,
                                                   DWORDLONG conditionMask);
TESSEL_PLATFORM_API DWORD WINAPI GetLastError();
TESSEL_PLATFORM_API void WINAPI SetLastError(DWORD error);
}
