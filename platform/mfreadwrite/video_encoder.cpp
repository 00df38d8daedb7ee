// The choice of encoder for a video target: the platform's own for WMV3, FFmpeg's for
// the others.
#include "mfreadwrite/video_encoder.h"

#include "mfapi.h"
#include "mfreadwrite/ffmpeg_video_encoder.h"
#include "mfreadwrite/wmv3_video_encoder.h"

namespace tessel::platform {

HRESULT OpenVideoEncoder(const VideoTarget& target, const ContainerNeeds& needs,
                         std::unique_ptr<VideoEncoder>* encoder) {
  if (target.subtype == MFVideoFormat_WMV3) return Wmv3VideoEncoder::Open(target, encoder);
  const AVCodec* found = nullptr;
  HRESULT hr = FindEncoder(target.subtype, &found);
  if (FAILED(hr)) return hr;
  return FFmpegVideoEncoder::Open(target, found, needs, encoder);
}

}  // namespace tessel::platform
