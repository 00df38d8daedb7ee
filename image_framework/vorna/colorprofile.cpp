#include "vorna/translationunit.h"

#include "vorna/colorprofile.h"

namespace vorna {

VORNA_DEFINE_STATIC_INTERFACE(ColorProfileInterface, nullptr);
VORNA_DEFINE_OBJECT_USE(g_srgbColorProfile, "vorna.ColorProfiles:srgb");

ColorProfile GetColorProfile(ObjectUseRecord& record) {
  static const void* const none = nullptr;
  return ColorProfile::FromBlock(*static_cast<const void* const*>(LookupObjectValue(record, &none)));
}

}  // namespace vorna
