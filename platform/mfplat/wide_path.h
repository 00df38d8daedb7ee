// UTF-16 file paths of the Windows API as the UTF-8 paths of this system.
#pragma once

#include <string>

#include "windows.h"

namespace tessel::platform {

std::string Utf8FromWide(LPCWSTR text);

}  // namespace tessel::platform
