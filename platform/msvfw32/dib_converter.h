// DibConverter: 24-bit DIB frames into the pixel format an encoder takes, with
// libswscale on as many threads as there are processors, as FFmpeg's own scaler runs.
// The DIB's row order is undone here, so encoders always get the top row first. YUV
// comes out with the BT.601 matrix that decoders of these formats assume.
#pragma once

#include "mfreadwrite/ffmpeg_owners.h"
#include "windows.h"

namespace tessel::platform {

class DibConverter {
 public:
  // stride: bytes from one DIB row to the next; bottomUp: the first row is the
  // picture's bottom row.
  HRESULT Open(int width, int height, int stride, bool bottomUp, AVPixelFormat target);
  // Fills picture (allocated in the target format at the size) from the DIB's pixels.
  HRESULT Convert(const uint8_t* dib, AVFrame* picture);

 private:
  ScalerPtr scaler_;
  FramePtr source_;  // the DIB's rows, top row first, as the scaler reads them
  int stride_ = 0;
  bool bottomUp_ = true;
};

}  // namespace tessel::platform
