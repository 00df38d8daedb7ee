// Wmv3VideoEncoder: a VideoEncoder over the platform's own WMV3 encoder, for
// MFVideoFormat_WMV3. Each picture gives one frame at once (no reordering, no delay),
// and the sequence header is the stream's 4-byte codec data, where ASF keeps it.
#pragma once

#include "mfreadwrite/video_encoder.h"
#include "wmvencod/wmv3_encoder.h"

namespace tessel::platform {

class Wmv3VideoEncoder final : public VideoEncoder {
 public:
  // MF_E_INVALIDMEDIATYPE for a target the encoder can't take (beyond 4096 a side).
  static HRESULT Open(const VideoTarget& target, std::unique_ptr<VideoEncoder>* encoder);

  HRESULT Describe(AVCodecParameters* parameters) const override;
  HRESULT Encode(const AVFrame* picture, std::vector<PacketPtr>* packets) override;

 private:
  Wmv3VideoEncoder(const VideoTarget& target, std::unique_ptr<Wmv3Encoder> encoder)
      : target_(target), encoder_(std::move(encoder)) {}

  VideoTarget target_;
  std::unique_ptr<Wmv3Encoder> encoder_;
  std::vector<uint8_t> frame_;
};

}  // namespace tessel::platform
