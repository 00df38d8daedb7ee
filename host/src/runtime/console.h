// Console output and the output mask that modules read through System.
#pragma once

#include "vorna/apibase.h"

namespace vorna::host {

void ConsoleOutput(const Char* line);
UInt32 GetOutputMask();

}  // namespace vorna::host
