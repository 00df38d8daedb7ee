// The methods of vorna.Object#1 that every class starts with: the class id as text,
// identity for equality and order, the address as hash.
#pragma once

#include "loading/host_class.h"

namespace vorna::host {

Bool AddRootMethods(ClassHandle* cls);

}  // namespace vorna::host
