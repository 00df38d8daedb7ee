// Errors of the io handlers: vorna.IoErrorObject with a message that says what failed,
// with which path, and the system's reason.
#pragma once

#include <string>

#include "vorna/errorbase.h"

namespace vorna::host {

// "WHAT PATH: REASON", the reason from errorNumber, e.g. "Cannot open file /x/y: No
// such file or directory".
ErrorResult RaiseIoError(const SourceLocation& location, const Char* what, const std::string& path, int errorNumber);

// "WHAT PATH: REASON" with a reason of the handler's own.
ErrorResult RaiseIoError(const SourceLocation& location, const Char* what, const std::string& path,
                         const Char* reason);

}  // namespace vorna::host
