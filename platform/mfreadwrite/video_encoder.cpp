// The choice of encoder for a video target. Every codec with an encoder here is one of
// FFmpeg's; WMV3 has none yet and is refused as on a system without that encoder.
#include "mfreadwrite/video_encoder.h"

#include "mfreadwrite/ffmpeg_video_encoder.h"

namespace tessel::platform {

HRESULT OpenVideoEncoder(const VideoTarget& target, const ContainerNeeds& needs,
                         std::unique_ptr<VideoEncoder>* encoder) {
  const AVCodec* found = nullptr;
  HRESULT hr = FindEncoder(target.subtype, &found);
  if (FAILED(hr)) return hr;
  return FFmpegVideoEncoder::Open(target, found, needs, encoder);
}

}  // namespace tessel::platform
