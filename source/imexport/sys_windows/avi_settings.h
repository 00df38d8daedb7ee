// The export settings of the AVI saver. The compressor a user chose is stored item by
// item beside the shared keys (quality, keyframes, datarate, customdata): avitype and
// avihandler are the module's own keys. Only the chooser writes them; a later export
// reads them back into the compressor's options.
#pragma once

#include <vfw.h>

#include "vorna/basearray.h"
#include "vorna/datadescription.h"
#include "vorna/records.h"

namespace tessel {

extern vorna::InternedId g_settingAviType;     // Int32, fccType of the chosen compressor ("vidc")
extern vorna::InternedId g_settingAviHandler;  // Int32, its four-character code

// quality 0 to 1 in 10000ths, cut after adding one half: 0.75 gives 7500.
vorna::Int32 QualityToTenThousandths(vorna::Float64 quality);

// Adds quality (0 to 1, in "percent"), datarate, keyframes and disable srgb conversion.
vorna::Result<void> DescribeAviSettings(vorna::DataDescription& description);

// The compressor options of settings: the stored choice, with its own state moved into
// state, or raw I420 at the highest quality and 800000 bytes per second when settings
// hold no choice.
vorna::Result<void> AviOptionsFromSettings(const vorna::DataDictionary& settings, AVICOMPRESSOPTIONS& options,
                                           vorna::BaseArray<vorna::Char>& state);

}  // namespace tessel
