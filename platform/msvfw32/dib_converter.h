// DibConverter: 24-bit DIB frames into the pixel format an encoder takes, with
// libswscale. The DIB's row order is undone here, so encoders always get the top row
// first. YUV comes out with the BT.601 matrix that decoders of these formats assume.
#pragma once

#include "mfreadwrite/ffmpeg_owners.h"
#include "windows.h"

namespace tessel::platform {

class DibConverter {
 public:
  // stride: bytes from one DIB row to the next; bottomUp: the first row is the
  // picture's bottom row.
  HRESULT Open(int width, int height, int stride, bool bottomUp, AVPixelFormat target);
  // Fills frame (allocated in the target format at the size) from the DIB's pixels.
  void Convert(const uint8_t* dib, AVFrame* frame) const;

 private:
  ScalerPtr scaler_;
  int height_ = 0;
  int stride_ = 0;
  bool bottomUp_ = true;
};

}  // namespace tessel::platform
