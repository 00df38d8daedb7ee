// The system's compressor dialog for the AVI saver: it opens with the stored choice of
// the settings (or raw I420 when there is none) and, when the user confirms, writes the
// chosen compressor back into the settings item by item, its own state included.
#pragma once

#include "vorna/datadictionary.h"
#include "vorna/mediasession_output.h"

namespace tessel {

// True when the user confirmed a compressor; false without an error when the dialog was
// cancelled, and then settings are as they were. A failure while writing back leaves
// the items before it written.
vorna::Result<vorna::Bool> ChooseAviCompressor(vorna::DataDictionary& settings,
                                               const vorna::GetWindowDelegate& getWindow);

}  // namespace tessel
