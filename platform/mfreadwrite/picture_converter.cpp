// PictureConverter.
#include "mfreadwrite/picture_converter.h"

#include "mferror.h"

namespace tessel::platform {

namespace {

int ScalerMatrix(AVColorSpace matrix) { return matrix == AVCOL_SPC_BT709 ? SWS_CS_ITU709 : SWS_CS_ITU601; }

}  // namespace

HRESULT PictureConverter::Prepare(const VideoInput& input, const VideoTarget& target) {
  ScalerPtr scaler(sws_getContext(target.width, target.height, input.format, target.width, target.height,
                                  AV_PIX_FMT_YUV420P, SWS_BICUBIC, nullptr, nullptr, nullptr));
  FramePtr picture(av_frame_alloc());
  if (!scaler || !picture) return E_OUTOFMEMORY;
  bool rgb = input.format == AV_PIX_FMT_BGRA;
  const int* coefficients = sws_getCoefficients(ScalerMatrix(YuvMatrix(target)));
  constexpr int kUnity = 1 << 16;
  // RGB comes in full range; YUY2 stays in the limited range it has.
  sws_setColorspaceDetails(scaler.get(), coefficients, rgb ? 1 : 0, coefficients, 0, 0, kUnity, kUnity);
  picture->format = AV_PIX_FMT_YUV420P;
  picture->width = target.width;
  picture->height = target.height;
  scaler_ = std::move(scaler);
  picture_ = std::move(picture);
  input_ = input;
  return S_OK;
}

// The encoder may still hold the last picture; then the next one gets new memory, which
// the scaler fills whole, rather than a copy of the last one.
HRESULT PictureConverter::NewPicture() {
  if (picture_->buf[0] && av_frame_is_writable(picture_.get())) return S_OK;
  AVFrame shape = *picture_;
  av_frame_unref(picture_.get());
  picture_->format = shape.format;
  picture_->width = shape.width;
  picture_->height = shape.height;
  return av_frame_get_buffer(picture_.get(), 0) < 0 ? E_OUTOFMEMORY : S_OK;
}

HRESULT PictureConverter::Convert(const BYTE* data, AVFrame** picture) {
  HRESULT hr = NewPicture();
  if (FAILED(hr)) return hr;
  int height = picture_->height;
  const uint8_t* rows[4] = {data, nullptr, nullptr, nullptr};
  int pitches[4] = {input_.pitch, 0, 0, 0};
  if (input_.bottomUp) {
    rows[0] = data + size_t(height - 1) * size_t(input_.pitch);
    pitches[0] = -input_.pitch;
  }
  int written = sws_scale(scaler_.get(), rows, pitches, 0, height, picture_->data, picture_->linesize);
  if (written != height) return MF_E_INVALID_STREAM_DATA;
  *picture = picture_.get();
  return S_OK;
}

}  // namespace tessel::platform
