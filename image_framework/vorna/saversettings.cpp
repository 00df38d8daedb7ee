#include "vorna/translationunit.h"

#include "vorna/saversettings.h"

#include "vorna/resourceid.h"

namespace vorna {

VORNA_DEFINE_RESOURCE_ID(g_saverSettingQuality, "quality");
VORNA_DEFINE_RESOURCE_ID(g_saverSettingKeyframes, "keyframes");
VORNA_DEFINE_RESOURCE_ID(g_saverSettingDatarate, "datarate");
VORNA_DEFINE_RESOURCE_ID(g_saverSettingCustomdata, "customdata");
VORNA_DEFINE_RESOURCE_ID(g_saverSettingBitmapinfoheader, "bitmapinfoheader");
VORNA_DEFINE_RESOURCE_ID(g_saverSettingDisableSrgbConversion, "disable srgb conversion");

}  // namespace vorna
