// What the host's session does with converters beyond their interfaces.
#pragma once

#include "vorna/basearray.h"
#include "vorna/baseref.h"

namespace vorna::host {

// Connects converter behind inputs: what its GetInputConverter gives from now on.
Result<void> SetInputConverters(const ObjectInterface& converter, Block<const ObjectRef> inputs);

}  // namespace vorna::host
