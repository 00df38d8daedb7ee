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
