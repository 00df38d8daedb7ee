// The compressor that a saver's system options choose, as it stands in the export
// settings: avitype (the compressor's type, "vidc" for video, as a little-endian
// four-character code) and avihandler (its four-character code), both Int32, and
// customdata (an array of bytes, the compressor's own state). Beside them the chooser
// writes quality, keyframes and datarate, which the saver describes as settings. These
// three it does not describe: only its system options write them, and the command line
// through --compressor and the settings file.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "saver_catalogue.h"
#include "vorna/datadictionary.h"

namespace tessel::cli {

// avitype, avihandler and customdata, each with its key and a value of its type as
// default. Needs a started Session.
std::vector<SettingInfo> CompressorSettings();
// Stores code as the chosen video compressor: avitype "vidc" and avihandler code. The
// state of another compressor (customdata) is dropped, since only its own compressor
// reads it.
bool SetCompressor(uint32_t code, vorna::DataDictionary& settings);
// The chosen compressor's code, as text; none when settings hold no avitype.
std::optional<std::string> CompressorOf(const vorna::DataDictionary& settings);

}  // namespace tessel::cli
