// StreamFormat: what AVIStreamSetFormat gave a stream of a file (a BITMAPINFOHEADER or a
// PCM WAVEFORMATEX), checked and read into what FFmpeg's AVI muxer needs.
#pragma once

#include <cstdint>
#include <vector>

#include "vfw.h"

extern "C" {
#include <libavcodec/codec_par.h>
}

namespace tessel::platform {

struct StreamFormat {
  AVMediaType type = AVMEDIA_TYPE_UNKNOWN;
  AVCodecID codec = AV_CODEC_ID_NONE;
  uint32_t tag = 0;  // biCompression, or the wave format tag
  // Video.
  int width = 0;
  int height = 0;
  int bitCount = 0;
  AVPixelFormat pixelFormat = AV_PIX_FMT_NONE;  // of uncompressed RGB frames
  std::vector<uint8_t> extradata;               // the bytes behind the header
  // Sound.
  int sampleRate = 0;
  int channels = 0;
  int bitsPerSample = 0;
  int blockAlign = 0;
};

// Reads the format of a stream of fccType; AVIERR_BADFORMAT for a format that is
// damaged, of another type, not PCM, or of a codec the file can't hold. Uncompressed
// RGB must be 24-bit and bottom-up, as a compressing stream's DIB frames are.
HRESULT ReadStreamFormat(DWORD fccType, const void* data, LONG size, StreamFormat* format);

// The stream's parameters for the muxer; AVIERR_MEMORY when they can't be allocated.
HRESULT FillCodecParameters(const StreamFormat& format, AVCodecParameters* parameters);

}  // namespace tessel::platform
