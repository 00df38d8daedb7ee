// Media Foundation status codes with the platform's values.
#pragma once

#include "winerror.h"

inline constexpr HRESULT MF_E_PLATFORM_NOT_INITIALIZED = (HRESULT)0xC00D36B0;
inline constexpr HRESULT MF_E_BAD_STARTUP_VERSION = (HRESULT)0xC00D36E3;
