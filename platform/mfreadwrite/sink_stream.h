// SinkStream: one stream of a sink writer, from the samples that come in to the packets
// of the file. AddStream makes it from the target type; SetInputType opens its encoder;
// Write encodes the bytes of one sample; Drain empties the encoder at the end. Called one thread at a
// time, under the writer's lock; encoders may run threads of their own.
#pragma once

#include <memory>
#include <vector>

#include "mfobjects.h"
#include "mfreadwrite/ffmpeg_owners.h"
#include "mfreadwrite/sink_audio_types.h"
#include "mfreadwrite/sink_container.h"
#include "mfreadwrite/sink_video_types.h"

namespace tessel::platform {

class SinkStream {
 public:
  virtual ~SinkStream() = default;

  // MF_E_INVALIDMEDIATYPE for a type this stream can't take in; the encoder's own
  // failures as OpenVideoEncoder and AudioEncoder::Open give them.
  virtual HRESULT SetInputType(IMFMediaType* type) = 0;
  virtual bool HasInputType() const = 0;
  // What the container records: the stream's parameters, the unit of its packets' times
  // and, for video, the frame rate (0/1 for sound).
  virtual HRESULT Describe(AVCodecParameters* parameters, AVRational* timeBase, AVRational* frameRate) const = 0;
  // Encodes the bytes of a sample of that time (100 ns ticks); the packets that came out
  // are appended.
  virtual HRESULT Write(LONGLONG time, const BYTE* data, size_t length, std::vector<PacketPtr>* packets) = 0;
  virtual HRESULT Drain(std::vector<PacketPtr>* packets) = 0;
};

// A stream for the target type in the container. MF_E_INVALIDMEDIATYPE for a type that
// the container can't hold or that is incomplete, MF_E_TOPO_CODEC_NOT_FOUND for a codec
// without an encoder here.
HRESULT CreateSinkStream(IMFMediaType* target, const SinkContainer& container, const ContainerNeeds& needs,
                         std::unique_ptr<SinkStream>* stream);

HRESULT CreateVideoSinkStream(const VideoTarget& target, const ContainerNeeds& needs,
                              std::unique_ptr<SinkStream>* stream);
HRESULT CreateAudioSinkStream(const AudioTarget& target, const ContainerNeeds& needs,
                              std::unique_ptr<SinkStream>* stream);

}  // namespace tessel::platform
