// The system's message texts for the statuses this platform meets.
#pragma once

#include "windows.h"

namespace tessel::platform {

// The text of a message id with its "\r\n" line end, or null if the system has none.
// A status HRESULT_FROM_WIN32(code) finds the text of the Win32 code.
const char16_t* FindSystemMessage(DWORD messageId);

}  // namespace tessel::platform
