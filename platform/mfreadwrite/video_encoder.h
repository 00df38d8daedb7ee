// VideoEncoder: the encoder of one video stream of a sink writer. It takes 4:2:0 YUV
// pictures of the target's size, one per frame slot, and gives compressed packets.
// FFmpeg's encoders sit behind it, and so can an encoder of the platform's own. One
// thread at a time; the encoder may run threads of its own.
#pragma once

#include <memory>
#include <vector>

#include "mfreadwrite/ffmpeg_owners.h"
#include "mfreadwrite/sink_container.h"
#include "mfreadwrite/sink_video_types.h"

namespace tessel::platform {

class VideoEncoder {
 public:
  virtual ~VideoEncoder() = default;
  // The stream as the container stores it: codec, frame size, pixel aspect, colour and
  // the codec's headers.
  virtual HRESULT Describe(AVCodecParameters* parameters) const = 0;
  // Encodes picture, whose pts counts frames; a null picture drains what the encoder
  // holds. The packets that came out are appended, timed in frames, with their key flag.
  virtual HRESULT Encode(const AVFrame* picture, std::vector<PacketPtr>* packets) = 0;
};

// An open encoder for the target, made for what the container needs.
// MF_E_TOPO_CODEC_NOT_FOUND for a codec without an encoder, MF_E_INVALIDMEDIATYPE for
// settings the encoder refuses.
HRESULT OpenVideoEncoder(const VideoTarget& target, const ContainerNeeds& needs,
                         std::unique_ptr<VideoEncoder>* encoder);

}  // namespace tessel::platform
