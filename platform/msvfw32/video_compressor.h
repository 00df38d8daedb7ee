// VideoCompressor: one open compressor of the table, as a compressing stream drives it.
// 24-bit DIB frames go in, compressed frames and the format that describes them come
// out. Used by one thread at a time (the one writing to the stream).
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "vfw.h"

namespace tessel::platform {

// What a compressing stream opens its compressor with.
struct CompressorSettings {
  int width = 0;
  int height = 0;
  int stride = 0;         // bytes from one row of an input frame to the next
  bool bottomUp = true;   // the first row of an input frame is the picture's bottom row
  DWORD rate = 0;         // rate / scale frames per second, reduced
  DWORD scale = 0;
  DWORD quality = 0;      // 0 to 10000
  DWORD keyFrameEvery = 0;   // frames from one key frame to the next; 0: the compressor's own
  DWORD bytesPerSecond = 0;  // the data rate to keep; 0: none, quality decides
};

// The quantiser that quality (0 to 10000) maps onto, from 31 down to 2, so that more
// quality never gives a coarser one.
inline int QuantiserForQuality(DWORD quality) {
  return 2 + static_cast<int>((int64_t(10000 - quality) * 29 + 5000) / 10000);
}

// One compressed frame, valid during the sink's call.
struct CompressedFrame {
  const uint8_t* data = nullptr;
  size_t size = 0;
  int64_t position = 0;  // the frame's number in the stream
  bool key = false;
};
using FrameSink = std::function<HRESULT(const CompressedFrame&)>;

class VideoCompressor {
 public:
  virtual ~VideoCompressor() = default;

  // The stream format of the compressed frames: a BITMAPINFOHEADER with biSize bytes,
  // the compressor's own data behind its first 40.
  virtual const std::vector<uint8_t>& Format() const = 0;
  // Compresses one input frame (rows padded to 4 bytes, in the input's row order) at
  // its position; forceKey makes it a key frame. The frames that are ready go to sink in
  // order: none while an encoder holds frames back, several when it lets them go.
  virtual HRESULT Compress(const uint8_t* frame, int64_t position, bool forceKey, const FrameSink& sink) = 0;
  // Gives every frame still held back to sink; nothing may be compressed afterwards.
  virtual HRESULT Flush(const FrameSink& sink) = 0;
};

// Opens a compressor for the settings: AVIERR_BADFORMAT for a frame size it can't
// take, AVIERR_MEMORY or AVIERR_COMPRESSOR when it can't be opened.
using CompressorFactory = HRESULT (*)(const CompressorSettings& settings, std::unique_ptr<VideoCompressor>* compressor);

}  // namespace tessel::platform
