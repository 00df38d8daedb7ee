// The keys of a saver's export settings that the image framework names for every saver
// (the settings travel as a DataDictionary under vorna.mediaformat.exportsettings).
// Each is an interned id of the plain name, compared by identity.
#pragma once

#include "vorna/records.h"

namespace vorna {

extern InternedId g_saverSettingQuality;                // Float64, 0 to 1
extern InternedId g_saverSettingKeyframes;              // Int32, largest distance of key frames
extern InternedId g_saverSettingDatarate;               // BytesValue, bytes per second
extern InternedId g_saverSettingCustomdata;             // array of Char, a compressor's own state
extern InternedId g_saverSettingBitmapinfoheader;       // the frame header of a system codec
extern InternedId g_saverSettingDisableSrgbConversion;  // Bool, frames in their own colour profile

}  // namespace vorna
