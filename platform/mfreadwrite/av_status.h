// FFmpeg error numbers as the platform's statuses.
#pragma once

#include "windows.h"

namespace tessel::platform {

// The status for a failure to open or parse a file.
HRESULT StatusFromOpenError(int error);
// The status for a failure while reading or decoding.
HRESULT StatusFromReadError(int error);
// The status for a failure while encoding or writing a file: the system's errors keep
// their Win32 meaning (a full disk is ERROR_DISK_FULL).
HRESULT StatusFromWriteError(int error);

// Media time in 100 ns ticks.
inline constexpr int64_t kTicksPerSecond = 10000000;

}  // namespace tessel::platform
