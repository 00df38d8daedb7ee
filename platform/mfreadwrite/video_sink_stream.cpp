// The video stream of a sink writer: uncompressed frames are converted to 4:2:0 YUV and
// encoded. Each frame's place comes from its own time, rounded to the frame grid of the
// target's rate, so that times given in 100 ns ticks never drift against the rate
// (29.97 frames per second stays 2997/100, frame after frame).
#include <algorithm>

#include "mferror.h"
#include "mfreadwrite/media_time.h"
#include "mfreadwrite/picture_converter.h"
#include "mfreadwrite/sink_stream.h"
#include "mfreadwrite/video_encoder.h"

namespace tessel::platform {

namespace {

class VideoSinkStream final : public SinkStream {
 public:
  VideoSinkStream(const VideoTarget& target, const ContainerNeeds& needs) : target_(target), needs_(needs) {}

  HRESULT SetInputType(IMFMediaType* type) override {
    VideoInput input;
    HRESULT hr = ReadVideoInput(type, target_, &input);
    std::unique_ptr<VideoEncoder> encoder;
    if (SUCCEEDED(hr)) hr = OpenVideoEncoder(target_, needs_, &encoder);
    if (SUCCEEDED(hr)) hr = converter_.Prepare(input, target_);
    if (FAILED(hr)) return hr;
    encoder_ = std::move(encoder);
    frameBytes_ = input.frameBytes;
    return S_OK;
  }

  bool HasInputType() const override { return encoder_ != nullptr; }

  HRESULT Describe(AVCodecParameters* parameters, AVRational* timeBase, AVRational* frameRate) const override {
    *timeBase = av_inv_q(target_.frameRate);
    *frameRate = target_.frameRate;
    return encoder_->Describe(parameters);
  }

  HRESULT Write(LONGLONG time, const BYTE* data, size_t length, std::vector<PacketPtr>* packets) override {
    if (length < frameBytes_) return MF_E_BUFFERTOOSMALL;
    AVFrame* picture = nullptr;
    HRESULT hr = converter_.Convert(data, &picture);
    if (FAILED(hr)) return hr;
    picture->pts = FrameSlot(time);
    return encoder_->Encode(picture, packets);
  }

  HRESULT Drain(std::vector<PacketPtr>* packets) override { return encoder_->Encode(nullptr, packets); }

 private:
  // The frame slot nearest to time. Two samples for one slot can't share a time in the
  // file, so the later one takes the next slot.
  int64_t FrameSlot(LONGLONG time) {
    int64_t slot = NearestUnits(time, av_inv_q(target_.frameRate));
    if (lastSlot_ != kNoSlot) slot = std::max(slot, lastSlot_ + 1);
    lastSlot_ = slot;
    return slot;
  }

  static constexpr int64_t kNoSlot = INT64_MIN;
  VideoTarget target_;
  ContainerNeeds needs_;
  std::unique_ptr<VideoEncoder> encoder_;
  PictureConverter converter_;
  size_t frameBytes_ = 0;
  int64_t lastSlot_ = kNoSlot;
};

}  // namespace

HRESULT CreateVideoSinkStream(const VideoTarget& target, const ContainerNeeds& needs,
                              std::unique_ptr<SinkStream>* stream) {
  stream->reset(new (std::nothrow) VideoSinkStream(target, needs));
  return *stream ? S_OK : E_OUTOFMEMORY;
}

}  // namespace tessel::platform
