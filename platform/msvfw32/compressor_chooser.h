// The compressor chooser that ICCompressorChoose shows: a callback installed through
// tessel_platform_control.h (the command line's prompt, a test's script), or none.
#pragma once

#include "tessel_platform_control.h"

namespace tessel::platform {

// Thread-safe; a chooser already showing finishes with the one it was called as.
void InstallCompressorChooser(TesselCompressorChooser chooser, void* context);

}  // namespace tessel::platform
