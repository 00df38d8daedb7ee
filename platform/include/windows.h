// The Win32 subset the module is written against: basic types, status codes and the
// KERNEL32 functions it calls, plus the COM basics of objbase.h. Wide text is UTF-16 (char16_t).
#pragma once

#include <cstdarg>
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

using SHORT = int16_t;
using USHORT = uint16_t;
using CHAR = char;
using UCHAR = uint8_t;
using FLOAT = float;
using DOUBLE = double;
using SCODE = int32_t;
using HLOCAL = void*;
using HGLOBAL = void*;
using LANGID = WORD;
using LPARAM = LONG_PTR;

struct RECT {
  LONG left;
  LONG top;
  LONG right;
  LONG bottom;
};

union LARGE_INTEGER {
  struct {
    DWORD LowPart;
    LONG HighPart;
  } u;
  LONGLONG QuadPart;
};
union ULARGE_INTEGER {
  struct {
    DWORD LowPart;
    DWORD HighPart;
  } u;
  ULONGLONG QuadPart;
};

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

// FormatMessageW flags and the language of the system's own texts.
inline constexpr DWORD FORMAT_MESSAGE_ALLOCATE_BUFFER = 0x00000100;
inline constexpr DWORD FORMAT_MESSAGE_IGNORE_INSERTS = 0x00000200;
inline constexpr DWORD FORMAT_MESSAGE_FROM_STRING = 0x00000400;
inline constexpr DWORD FORMAT_MESSAGE_FROM_HMODULE = 0x00000800;
inline constexpr DWORD FORMAT_MESSAGE_FROM_SYSTEM = 0x00001000;
inline constexpr WORD LANG_NEUTRAL = 0x00;
inline constexpr WORD SUBLANG_DEFAULT = 0x01;
#define MAKELANGID(p, s) ((((WORD)(s)) << 10) | (WORD)(p))

// LocalAlloc flags.
inline constexpr UINT LMEM_FIXED = 0x0000;
inline constexpr UINT LMEM_ZEROINIT = 0x0040;
inline constexpr UINT LPTR = LMEM_FIXED | LMEM_ZEROINIT;

// GlobalAlloc flags.
inline constexpr UINT GMEM_FIXED = 0x0000;
inline constexpr UINT GMEM_MOVEABLE = 0x0002;
inline constexpr UINT GMEM_ZEROINIT = 0x0040;
inline constexpr UINT GHND = GMEM_MOVEABLE | GMEM_ZEROINIT;
inline constexpr UINT GPTR = GMEM_FIXED | GMEM_ZEROINIT;

// Open modes of files (OpenFile, AVIFileOpenW).
inline constexpr UINT OF_READ = 0x00000000;
inline constexpr UINT OF_WRITE = 0x00000001;
inline constexpr UINT OF_READWRITE = 0x00000002;
inline constexpr UINT OF_SHARE_EXCLUSIVE = 0x00000010;
inline constexpr UINT OF_SHARE_DENY_WRITE = 0x00000020;
inline constexpr UINT OF_SHARE_DENY_READ = 0x00000030;
inline constexpr UINT OF_SHARE_DENY_NONE = 0x00000040;
inline constexpr UINT OF_CREATE = 0x00001000;

extern "C" {
TESSEL_PLATFORM_API ULONGLONG WINAPI VerSetConditionMask(ULONGLONG conditionMask, DWORD typeMask,
                                                         BYTE condition);
TESSEL_PLATFORM_API BOOL WINAPI VerifyVersionInfoW(LPOSVERSIONINFOEXW versionInfo, DWORD typeMask,
                                                   DWORDLONG conditionMask);
TESSEL_PLATFORM_API DWORD WINAPI GetLastError();
TESSEL_PLATFORM_API void WINAPI SetLastError(DWORD error);

// Memory that FormatMessageW hands out; freed with LocalFree, which returns null on
// success.
TESSEL_PLATFORM_API HLOCAL WINAPI LocalAlloc(UINT flags, SIZE_T bytes);
TESSEL_PLATFORM_API HLOCAL WINAPI LocalFree(HLOCAL memory);

// Memory handed between a program and the system's dialogs, such as a compressor's
// state in COMPVARS. A handle is valid until GlobalFree; GlobalLock gives its memory
// (the same address for every lock) and counts locks, GlobalUnlock returns TRUE while
// locks remain. A handle the platform did not hand out fails with
// ERROR_INVALID_HANDLE. GlobalFree returns null on success, the handle on failure.
TESSEL_PLATFORM_API HGLOBAL WINAPI GlobalAlloc(UINT flags, SIZE_T bytes);
TESSEL_PLATFORM_API LPVOID WINAPI GlobalLock(HGLOBAL memory);
TESSEL_PLATFORM_API BOOL WINAPI GlobalUnlock(HGLOBAL memory);
TESSEL_PLATFORM_API HGLOBAL WINAPI GlobalFree(HGLOBAL memory);
TESSEL_PLATFORM_API SIZE_T WINAPI GlobalSize(HGLOBAL memory);

// Only FORMAT_MESSAGE_FROM_SYSTEM is served: the text of a status from the system's
// message table, with its "\r\n" line end. With FORMAT_MESSAGE_ALLOCATE_BUFFER, buffer
// points at a WCHAR* that receives LocalAlloc memory. Returns the length without the
// terminator, or 0 with GetLastError set (ERROR_MR_MID_NOT_FOUND for an unknown status).
TESSEL_PLATFORM_API DWORD WINAPI FormatMessageW(DWORD flags, LPCVOID source, DWORD messageId,
                                                DWORD languageId, LPWSTR buffer, DWORD size,
                                                va_list* arguments);
}
