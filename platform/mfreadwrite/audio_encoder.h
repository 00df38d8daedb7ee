// AudioEncoder: interleaved PCM of any rate and channel count into AAC or MP3 packets.
// libswresample converts the sound to the encoder's rate, channel layout and sample
// format (more channels than the target has are mixed down with the usual matrix); a
// queue cuts it into the encoder's frames. Time counts in samples at the encoder's rate,
// so that a long sound keeps its place to the sample. Memory holds at most a chunk of
// the input and a frame of converted sound beside the encoder's own. One thread at a time.
#pragma once

#include <memory>
#include <vector>

#include "mfreadwrite/ffmpeg_owners.h"
#include "mfreadwrite/sink_audio_types.h"

namespace tessel::platform {

class AudioEncoder {
 public:
  static HRESULT Open(const AudioTarget& target, const PcmInput& input, bool globalHeaders,
                      std::unique_ptr<AudioEncoder>* encoder);
  ~AudioEncoder();

  HRESULT Describe(AVCodecParameters* parameters) const;
  // The unit of the packets' times: one sample at the encoder's rate.
  AVRational TimeBase() const { return {1, context_->sample_rate}; }
  // Sets where the sound starts, in samples, before the first Encode.
  void StartAt(int64_t samples) { nextPts_ = samples; }
  // Encodes whole blocks of pcm (a trailing part of a block is dropped); the packets that
  // came out are appended.
  HRESULT Encode(const BYTE* pcm, size_t bytes, std::vector<PacketPtr>* packets);
  // Encodes what the converter and the queue still hold, then drains the encoder.
  HRESULT Drain(std::vector<PacketPtr>* packets);

 private:
  AudioEncoder(CodecContextPtr context, const PcmInput& input) : context_(std::move(context)), input_(input) {}
  HRESULT PrepareConversion();
  HRESULT Convert(const uint8_t* samples, int count);
  // Sends whole frames from the queue, and with final also the rest, padded if the
  // encoder wants whole frames.
  HRESULT SendFrames(bool final, std::vector<PacketPtr>* packets);

  CodecContextPtr context_;
  PcmInput input_;
  ResamplerPtr resampler_;
  AudioFifoPtr queue_;
  FramePtr frame_;                 // one encoder frame, reused
  std::vector<int32_t> unpacked_;  // 24-bit input widened to 32 bits, per chunk
  int64_t nextPts_ = 0;
};

}  // namespace tessel::platform
