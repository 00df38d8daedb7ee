// COM: the base API and the property values of propidl.h.
#pragma once

#include "combaseapi.h"
#include "propidl.h"
