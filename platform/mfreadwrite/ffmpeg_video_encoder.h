// FFmpegVideoEncoder: a VideoEncoder over one of FFmpeg's encoders: libx264 for H.264,
// FFmpeg's own for WMV1 and WMV2.
#pragma once

#include "mfreadwrite/sink_codecs.h"
#include "mfreadwrite/video_encoder.h"

namespace tessel::platform {

class FFmpegVideoEncoder final : public VideoEncoder {
 public:
  static HRESULT Open(const VideoTarget& target, const AVCodec* codec, const ContainerNeeds& needs,
                      std::unique_ptr<VideoEncoder>* encoder);

  HRESULT Describe(AVCodecParameters* parameters) const override;
  HRESULT Encode(const AVFrame* picture, std::vector<PacketPtr>* packets) override;

 private:
  explicit FFmpegVideoEncoder(CodecContextPtr context) : context_(std::move(context)) {}

  CodecContextPtr context_;
};

}  // namespace tessel::platform
