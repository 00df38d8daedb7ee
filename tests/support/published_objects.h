// Objects of published classes for tests: a null reference when the class is not
// available or its object lacks the interface.
#pragma once

#include "vorna/component.h"

namespace tessel::testing {

template <typename I>
vorna::StrongRef<I> MakeObject(vorna::ObjectUseRecord& publishedClass) {
  vorna::Result<vorna::StrongRef<I>> made = vorna::CreateObjectOf<I>(publishedClass, VORNA_SOURCE_LOCATION);
  return made.IsError() ? vorna::StrongRef<I>() : made.GetValue();
}

}  // namespace tessel::testing
