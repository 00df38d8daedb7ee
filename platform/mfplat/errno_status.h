// The system's errors of file calls (errno values) as the platform's statuses.
#pragma once

#include "windows.h"

namespace tessel::platform {

HRESULT StatusFromErrno(int error);

}  // namespace tessel::platform
