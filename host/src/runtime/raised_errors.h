// The words System::RaiseError hands out. Each thread keeps the references of its last
// RAISED_ERROR_DEPTH raised errors in a ring; a word stays valid until that many more
// errors have been raised on the same thread, or the thread ends. That is ample for the
// rule that a caller returns a word at once or turns it into a message before it goes
// on. An error crossing threads travels as a reference and is raised again there.
#pragma once

#include "vorna/resultbase.h"

namespace vorna::host {

inline constexpr Int RAISED_ERROR_DEPTH = 64;

ErrorWord RaiseError(void** errorReference);
ErrorWord RaiseErrorCopy(void* const* errorReference);

}  // namespace vorna::host
