#include "vorna/translationunit.h"

#include "vorna/colorprofile.h"

#include "vorna/data.h"
#include "vorna/datatype.h"

namespace vorna {

VORNA_DEFINE_STATIC_INTERFACE(ColorProfileInterface, nullptr);
VORNA_DEFINE_OBJECT_USE(g_srgbColorProfile, "vorna.ColorProfiles:srgb");

ColorProfile GetColorProfile(ObjectUseRecord& record) {
  static const void* const none = nullptr;
  return ColorProfile::FromBlock(*static_cast<const void* const*>(LookupObjectValue(record, &none)));
}

ColorProfile ColorProfileFromData(const Data& data) {
  const DataType* type = data.GetType();
  if (!type || type->referenceClass != refclass::COLOR_PROFILE) return ColorProfile();
  return ColorProfile::FromBlock(*static_cast<const void* const*>(data.GetAddress()));
}

VORNA_DEFINE_DECLARED_STATIC_INTERFACE(ColorProfileConvertInterface, nullptr);

}  // namespace vorna
