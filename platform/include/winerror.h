// Status codes (HRESULT) with the platform's values.
#pragma once

#include <cstdint>

using HRESULT = int32_t;

#define SUCCEEDED(hr) (((HRESULT)(hr)) >= 0)
#define FAILED(hr) (((HRESULT)(hr)) < 0)
#define HRESULT_FROM_WIN32(x) \
  ((HRESULT)(x) <= 0 ? ((HRESULT)(x)) : ((HRESULT)(((x) & 0x0000FFFF) | (7 << 16) | 0x80000000)))

inline constexpr HRESULT S_OK = 0;
inline constexpr HRESULT S_FALSE = 1;
inline constexpr HRESULT E_NOTIMPL = (HRESULT)0x80004001;
inline constexpr HRESULT E_NOINTERFACE = (HRESULT)0x80004002;
inline constexpr HRESULT E_POINTER = (HRESULT)0x80004003;
inline constexpr HRESULT E_ABORT = (HRESULT)0x80004004;
inline constexpr HRESULT E_FAIL = (HRESULT)0x80004005;
inline constexpr HRESULT E_UNEXPECTED = (HRESULT)0x8000FFFF;
inline constexpr HRESULT E_ACCESSDENIED = (HRESULT)0x80070005;
inline constexpr HRESULT E_OUTOFMEMORY = (HRESULT)0x8007000E;
inline constexpr HRESULT E_INVALIDARG = (HRESULT)0x80070057;

inline constexpr HRESULT E_HANDLE = (HRESULT)0x80070006;
inline constexpr HRESULT E_NOT_VALID_STATE = (HRESULT)0x8007139F;
inline constexpr HRESULT CLASS_E_NOAGGREGATION = (HRESULT)0x80040110;
inline constexpr HRESULT REGDB_E_CLASSNOTREG = (HRESULT)0x80040154;
inline constexpr HRESULT CO_E_NOTINITIALIZED = (HRESULT)0x800401F0;
inline constexpr HRESULT RPC_E_CHANGED_MODE = (HRESULT)0x80010106;
inline constexpr HRESULT STG_E_INVALIDFUNCTION = (HRESULT)0x80030001;
inline constexpr HRESULT STG_E_MEDIUMFULL = (HRESULT)0x80030070;

// Win32 error codes that the platform's functions set or wrap in an HRESULT.
inline constexpr uint32_t ERROR_SUCCESS = 0;
inline constexpr uint32_t ERROR_INVALID_FUNCTION = 1;
inline constexpr uint32_t ERROR_FILE_NOT_FOUND = 2;
inline constexpr uint32_t ERROR_PATH_NOT_FOUND = 3;
inline constexpr uint32_t ERROR_ACCESS_DENIED = 5;
inline constexpr uint32_t ERROR_INVALID_HANDLE = 6;
inline constexpr uint32_t ERROR_NOT_ENOUGH_MEMORY = 8;
inline constexpr uint32_t ERROR_OUTOFMEMORY = 14;
inline constexpr uint32_t ERROR_WRITE_FAULT = 29;
inline constexpr uint32_t ERROR_SHARING_VIOLATION = 32;
inline constexpr uint32_t ERROR_HANDLE_EOF = 38;
inline constexpr uint32_t ERROR_NOT_SUPPORTED = 50;
inline constexpr uint32_t ERROR_FILE_EXISTS = 80;
inline constexpr uint32_t ERROR_INVALID_PARAMETER = 87;
inline constexpr uint32_t ERROR_DISK_FULL = 112;
inline constexpr uint32_t ERROR_INSUFFICIENT_BUFFER = 122;
inline constexpr uint32_t ERROR_INVALID_NAME = 123;
inline constexpr uint32_t ERROR_NOT_LOCKED = 158;
inline constexpr uint32_t ERROR_ALREADY_EXISTS = 183;
inline constexpr uint32_t ERROR_FILENAME_EXCED_RANGE = 206;
inline constexpr uint32_t ERROR_MR_MID_NOT_FOUND = 317;
