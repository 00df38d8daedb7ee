// VideoConverter.
#include "mfreadwrite/video_converter.h"

#include "mferror.h"

namespace tessel::platform {

namespace {

int ColorspaceOf(const AVFrame& frame) {
  switch (frame.colorspace) {
    case AVCOL_SPC_BT709: return SWS_CS_ITU709;
    case AVCOL_SPC_BT2020_NCL:
    case AVCOL_SPC_BT2020_CL: return SWS_CS_BT2020;
    case AVCOL_SPC_SMPTE240M: return SWS_CS_SMPTE240M;
    default: return SWS_CS_DEFAULT;
  }
}

}  // namespace

// The output keeps the matrix and range the scaler chose for it.
void VideoConverter::MatchColorspace(const AVFrame& frame, bool newScaler) {
  if (!newScaler && frame.colorspace == colorspace_ && frame.color_range == range_) return;
  colorspace_ = frame.colorspace;
  range_ = frame.color_range;
  int* sourceTable = nullptr;
  int* targetTable = nullptr;
  int sourceRange = 0, targetRange = 0, brightness = 0, contrast = 0, saturation = 0;
  if (sws_getColorspaceDetails(scaler_.get(), &sourceTable, &sourceRange, &targetTable, &targetRange, &brightness,
                               &contrast, &saturation) < 0) {
    return;
  }
  sws_setColorspaceDetails(scaler_.get(), sws_getCoefficients(ColorspaceOf(frame)),
                           frame.color_range == AVCOL_RANGE_JPEG ? 1 : sourceRange, targetTable, targetRange,
                           brightness, contrast, saturation);
}

HRESULT VideoConverter::Convert(const AVFrame& frame, const VideoOutput& output, uint8_t* destination) {
  if (frame.width <= 0 || frame.height <= 0 || frame.format < 0) return MF_E_INVALID_STREAM_DATA;
  const ImageLayout& layout = output.layout;
  Shape shape{frame.width, frame.height, frame.format, int(layout.width), int(layout.height), output.pixelFormat};
  bool newScaler = !scaler_ || !(shape == shape_);
  if (newScaler) {
    scaler_.reset(sws_getContext(frame.width, frame.height, static_cast<AVPixelFormat>(frame.format), shape.width,
                                 shape.height, output.pixelFormat, SWS_BICUBIC, nullptr, nullptr, nullptr));
    shape_ = shape;
  }
  if (!scaler_) return MF_E_INVALIDMEDIATYPE;
  MatchColorspace(frame, newScaler);
  uint8_t* planes[4] = {destination, nullptr, nullptr, nullptr};
  int pitches[4] = {int(layout.pitch), 0, 0, 0};
  int rows = sws_scale(scaler_.get(), frame.data, frame.linesize, 0, frame.height, planes, pitches);
  return rows == int(layout.height) ? S_OK : MF_E_INVALID_STREAM_DATA;
}

}  // namespace tessel::platform
