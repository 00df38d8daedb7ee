// The video compressors the platform offers to AVI files, as the command line lists and
// names them: by four-character code, matched without regard to case as the platform
// matches them, with what each can be told (quality, key frames, data rate).
#pragma once

#include <span>
#include <string>
#include <vector>

#include "tessel_platform_control.h"

namespace tessel::cli {

// In the platform's order. The names point into the platform's own table, which lives as
// long as the process.
std::vector<TesselCompressor> PlatformCompressors();
// The compressor of code in compressors, or null.
const TesselCompressor* FindCompressor(std::span<const TesselCompressor> compressors, DWORD code);
bool SameCompressorCode(DWORD a, DWORD b);

bool SupportsQuality(const TesselCompressor& compressor);
bool SupportsKeyFrames(const TesselCompressor& compressor);
bool SupportsDataRate(const TesselCompressor& compressor);
// "quality, key frames, data rate", or the part of it the compressor supports; empty
// for none.
std::string SupportsText(const TesselCompressor& compressor);

}  // namespace tessel::cli
