// Conversion of DIB frames with libswscale.
#include "msvfw32/dib_converter.h"

#include "vfw.h"

namespace tessel::platform {

HRESULT DibConverter::Open(int width, int height, int stride, bool bottomUp, AVPixelFormat target) {
  scaler_.reset(sws_getContext(width, height, AV_PIX_FMT_BGR24, width, height, target, SWS_BICUBIC, nullptr, nullptr,
                               nullptr));
  if (!scaler_) return AVIERR_MEMORY;
  height_ = height;
  stride_ = stride;
  bottomUp_ = bottomUp;
  return S_OK;
}

// A bottom-up DIB is read from its last row upwards with a negative stride.
void DibConverter::Convert(const uint8_t* dib, AVFrame* frame) const {
  const uint8_t* top = bottomUp_ ? dib + ptrdiff_t(height_ - 1) * stride_ : dib;
  const int step = bottomUp_ ? -stride_ : stride_;
  sws_scale(scaler_.get(), &top, &step, 0, height_, frame->data, frame->linesize);
}

}  // namespace tessel::platform
