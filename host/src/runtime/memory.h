// Memory of System: malloc with a counter of live blocks and a failure switch for tests.
#pragma once

#include "vorna/apibase.h"

namespace vorna::host {

void* HostAlloc(Int size, const SourceLocation& location);
void* HostAllocClear(Int size, const SourceLocation& location);
void* HostRealloc(void* block, Int size, const SourceLocation& location);
void HostFree(void* block);

}  // namespace vorna::host
