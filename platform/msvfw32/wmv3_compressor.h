// The AVI compressor "wmv3": the platform's own WMV3 encoder behind Video for Windows.
// Quality picks a fixed quantiser step, a data rate turns the encoder's rate control on,
// and the 4-byte sequence header follows the stream format's BITMAPINFOHEADER, where
// decoders of WMV3 in AVI look for it.
#pragma once

#include "msvfw32/video_compressor.h"

namespace tessel::platform {

// Sizes must be even and from 16 to 4096 a side; AVIERR_BADFORMAT otherwise.
HRESULT CreateWmv3Compressor(const CompressorSettings& settings, std::unique_ptr<VideoCompressor>* compressor);

// What the chooser lists: quality, data rate and key-frame distance.
inline constexpr DWORD kWmv3CompressorFlags = VIDCF_QUALITY | VIDCF_CRUNCH | VIDCF_TEMPORAL;

}  // namespace tessel::platform
