// The video compressors of the platform, by four-character code: what the chooser
// lists and what AVIMakeCompressedStream opens. Each entry's factory opens one; a
// compressor that is not FFmpeg's (such as the platform's own WMV3 encoder) is one more
// entry with a factory of its own.
//
// No compressor keeps state of its own: lpParms/cbParms of AVICOMPRESSOPTIONS are
// accepted and not read, and the chooser hands back whatever state it was given.
#pragma once

#include <span>

#include "msvfw32/video_compressor.h"
#include "tessel_platform_control.h"

namespace tessel::platform {

struct CompressorEntry {
  TesselCompressor info;
  CompressorFactory create;
};

// In the order the chooser shows them.
std::span<const CompressorEntry> Compressors();

// The entry of a four-character code, matched without regard to case; 0 stands for the
// uncompressed DIB. Null for a code no compressor has.
const CompressorEntry* FindCompressor(DWORD handler);

}  // namespace tessel::platform
