// The audio stream of a sink writer: PCM is converted and encoded as it comes. The
// sound starts at the time of its first sample and then counts in samples, so a whole
// track given as one sample keeps its place to the sample; later samples follow on
// without a gap.
#include "mfreadwrite/audio_encoder.h"
#include "mfreadwrite/media_time.h"
#include "mfreadwrite/sink_stream.h"

namespace tessel::platform {

namespace {

class AudioSinkStream final : public SinkStream {
 public:
  AudioSinkStream(const AudioTarget& target, const ContainerNeeds& needs) : target_(target), needs_(needs) {}

  HRESULT SetInputType(IMFMediaType* type) override {
    PcmInput input;
    HRESULT hr = ReadPcmInput(type, &input);
    std::unique_ptr<AudioEncoder> encoder;
    if (SUCCEEDED(hr)) hr = AudioEncoder::Open(target_, input, needs_.globalHeaders, &encoder);
    if (SUCCEEDED(hr)) encoder_ = std::move(encoder);
    return hr;
  }

  bool HasInputType() const override { return encoder_ != nullptr; }

  HRESULT Describe(AVCodecParameters* parameters, AVRational* timeBase, AVRational* frameRate) const override {
    *timeBase = encoder_->TimeBase();
    *frameRate = {0, 1};
    return encoder_->Describe(parameters);
  }

  HRESULT Write(LONGLONG time, const BYTE* data, size_t length, std::vector<PacketPtr>* packets) override {
    if (!started_) {
      encoder_->StartAt(NearestUnits(time, encoder_->TimeBase()));
      started_ = true;
    }
    return encoder_->Encode(data, length, packets);
  }

  HRESULT Drain(std::vector<PacketPtr>* packets) override { return encoder_->Drain(packets); }

 private:
  AudioTarget target_;
  ContainerNeeds needs_;
  std::unique_ptr<AudioEncoder> encoder_;
  bool started_ = false;
};

}  // namespace

HRESULT CreateAudioSinkStream(const AudioTarget& target, const ContainerNeeds& needs,
                              std::unique_ptr<SinkStream>* stream) {
  stream->reset(new (std::nothrow) AudioSinkStream(target, needs));
  return *stream ? S_OK : E_OUTOFMEMORY;
}

}  // namespace tessel::platform
