// The uncompressed "compressor" (DIB, code 0): frames are stored as the 24-bit DIBs
// they are, bottom-up with rows padded to 4 bytes; top-down input is turned over.
#pragma once

#include <memory>

#include "msvfw32/video_compressor.h"

namespace tessel::platform {

HRESULT CreateDibCompressor(const CompressorSettings& settings, std::unique_ptr<VideoCompressor>* compressor);

}  // namespace tessel::platform
