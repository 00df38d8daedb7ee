// Conversion of DIB frames with libswscale.
#include "msvfw32/dib_converter.h"

#include "vfw.h"

extern "C" {
#include <libavutil/opt.h>
}

namespace tessel::platform {

HRESULT DibConverter::Open(int width, int height, int stride, bool bottomUp, AVPixelFormat target) {
  scaler_.reset(sws_alloc_context());
  source_.reset(av_frame_alloc());
  if (!scaler_ || !source_) return AVIERR_MEMORY;
  SwsContext* scaler = scaler_.get();
  av_opt_set_int(scaler, "srcw", width, 0);
  av_opt_set_int(scaler, "srch", height, 0);
  av_opt_set_pixel_fmt(scaler, "src_format", AV_PIX_FMT_BGR24, 0);
  av_opt_set_int(scaler, "dstw", width, 0);
  av_opt_set_int(scaler, "dsth", height, 0);
  av_opt_set_pixel_fmt(scaler, "dst_format", target, 0);
  av_opt_set_int(scaler, "sws_flags", SWS_BICUBIC, 0);
  av_opt_set_int(scaler, "threads", 0, 0);  // one per processor
  if (sws_init_context(scaler, nullptr, nullptr) < 0) return AVIERR_MEMORY;
  source_->format = AV_PIX_FMT_BGR24;
  source_->width = width;
  source_->height = height;
  stride_ = stride;
  bottomUp_ = bottomUp;
  return S_OK;
}

// A bottom-up DIB is read from its last row upwards with a negative stride.
HRESULT DibConverter::Convert(const uint8_t* dib, AVFrame* picture) {
  source_->data[0] = const_cast<uint8_t*>(bottomUp_ ? dib + ptrdiff_t(source_->height - 1) * stride_ : dib);
  source_->linesize[0] = bottomUp_ ? -stride_ : stride_;
  return sws_scale_frame(scaler_.get(), picture, source_.get()) < 0 ? AVIERR_MEMORY : S_OK;
}

}  // namespace tessel::platform
