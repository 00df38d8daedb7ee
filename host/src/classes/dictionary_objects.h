// What the host does with objects of vorna.DataDictionaryObjectClass beyond their
// interface.
#pragma once

#include "vorna/objectbase.h"

namespace vorna::host {

// Gives to the keys and values of from; the two share them until one writes.
Result<void> CopyProperties(const ObjectInterface& from, const ObjectInterface& to);

}  // namespace vorna::host
