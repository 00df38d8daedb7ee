// PictureConverter. The caller's frame is handed to the scaler wrapped, not copied.
#include "mfreadwrite/picture_converter.h"

#include "mferror.h"

extern "C" {
#include <libavutil/opt.h>
}

namespace tessel::platform {

namespace {

int ScalerMatrix(AVColorSpace matrix) { return matrix == AVCOL_SPC_BT709 ? SWS_CS_ITU709 : SWS_CS_ITU601; }

void KeepMemory(void*, uint8_t*) {}

}  // namespace

HRESULT PictureConverter::Prepare(const VideoInput& input, const VideoTarget& target, int threads) {
  ScalerPtr scaler(sws_alloc_context());
  FramePtr picture(av_frame_alloc());
  FramePtr source(av_frame_alloc());
  if (!scaler || !picture || !source) return E_OUTOFMEMORY;
  av_opt_set_int(scaler.get(), "srcw", target.width, 0);
  av_opt_set_int(scaler.get(), "srch", target.height, 0);
  av_opt_set_int(scaler.get(), "src_format", input.format, 0);
  av_opt_set_int(scaler.get(), "dstw", target.width, 0);
  av_opt_set_int(scaler.get(), "dsth", target.height, 0);
  av_opt_set_int(scaler.get(), "dst_format", AV_PIX_FMT_YUV420P, 0);
  av_opt_set_int(scaler.get(), "sws_flags", SWS_BICUBIC, 0);
  av_opt_set_int(scaler.get(), "threads", threads, 0);
  if (sws_init_context(scaler.get(), nullptr, nullptr) < 0) return E_OUTOFMEMORY;
  bool rgb = input.format == AV_PIX_FMT_BGR0;
  const int* coefficients = sws_getCoefficients(ScalerMatrix(YuvMatrix(target)));
  constexpr int kUnity = 1 << 16;
  // RGB comes in full range; YUY2 stays in the limited range it has.
  sws_setColorspaceDetails(scaler.get(), coefficients, rgb ? 1 : 0, coefficients, 0, 0, kUnity, kUnity);
  picture->format = AV_PIX_FMT_YUV420P;
  picture->width = target.width;
  picture->height = target.height;
  if (av_frame_get_buffer(picture.get(), 0) < 0) return E_OUTOFMEMORY;
  source->format = input.format;
  source->width = target.width;
  source->height = target.height;
  scaler_ = std::move(scaler);
  picture_ = std::move(picture);
  source_ = std::move(source);
  input_ = input;
  return S_OK;
}

HRESULT PictureConverter::Convert(const BYTE* data, AVFrame** picture) {
  if (av_frame_make_writable(picture_.get()) < 0) return E_OUTOFMEMORY;
  int height = picture_->height;
  source_->buf[0] = av_buffer_create(const_cast<BYTE*>(data), input_.frameBytes, &KeepMemory, nullptr,
                                     AV_BUFFER_FLAG_READONLY);
  if (!source_->buf[0]) return E_OUTOFMEMORY;
  source_->data[0] = const_cast<BYTE*>(data);
  source_->linesize[0] = input_.pitch;
  if (input_.bottomUp) {
    source_->data[0] += size_t(height - 1) * size_t(input_.pitch);
    source_->linesize[0] = -input_.pitch;
  }
  int error = sws_scale_frame(scaler_.get(), picture_.get(), source_.get());
  av_buffer_unref(&source_->buf[0]);
  if (error < 0) return MF_E_INVALID_STREAM_DATA;
  *picture = picture_.get();
  return S_OK;
}

}  // namespace tessel::platform
