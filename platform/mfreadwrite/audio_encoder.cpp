// AudioEncoder.
#include "mfreadwrite/audio_encoder.h"

#include <algorithm>

#include "mfapi.h"
#include "mferror.h"
#include "mfreadwrite/sink_codecs.h"

namespace tessel::platform {

namespace {

// Input frames converted per step, so that a whole track given at once never needs a
// converted copy of itself.
constexpr int kChunkFrames = 4096;

AVSampleFormat InputFormat(int bitsPerSample) {
  switch (bitsPerSample) {
    case 8: return AV_SAMPLE_FMT_U8;
    case 16: return AV_SAMPLE_FMT_S16;
    default: return AV_SAMPLE_FMT_S32;  // 24-bit samples are widened to 32 first
  }
}

void InputLayout(const PcmInput& input, AVChannelLayout* layout) {
  if (input.channelMask == 0 || av_channel_layout_from_mask(layout, input.channelMask) < 0) {
    av_channel_layout_default(layout, input.channels);
  }
}

// 24-bit little-endian samples into the high bytes of 32-bit ones.
void Widen24(const uint8_t* samples, size_t count, int32_t* wide) {
  for (size_t i = 0; i < count; ++i) {
    const uint8_t* sample = samples + i * 3;
    wide[i] = int32_t(uint32_t(sample[0]) << 8 | uint32_t(sample[1]) << 16 | uint32_t(sample[2]) << 24);
  }
}

}  // namespace

HRESULT AudioEncoder::Open(const AudioTarget& target, const PcmInput& input, bool globalHeaders,
                           std::unique_ptr<AudioEncoder>* encoder) {
  const AVCodec* found = nullptr;
  HRESULT hr = FindEncoder(target.subtype, &found);
  if (FAILED(hr)) return hr;
  CodecContextPtr context(avcodec_alloc_context3(found));
  if (!context) return E_OUTOFMEMORY;
  context->sample_rate = target.sampleRate;
  context->time_base = {1, target.sampleRate};
  av_channel_layout_default(&context->ch_layout, target.channels);
  context->sample_fmt = found->sample_fmts ? found->sample_fmts[0] : AV_SAMPLE_FMT_FLTP;
  context->bit_rate = target.bitRate;
  if (target.subtype == MFAudioFormat_AAC) context->profile = FF_PROFILE_AAC_LOW;
  if (globalHeaders) context->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
  hr = OpenEncoder(context.get(), found, nullptr);
  if (FAILED(hr)) return hr;
  std::unique_ptr<AudioEncoder> made(new (std::nothrow) AudioEncoder(std::move(context), input));
  if (!made) return E_OUTOFMEMORY;
  hr = made->PrepareConversion();
  if (SUCCEEDED(hr)) *encoder = std::move(made);
  return hr;
}

AudioEncoder::~AudioEncoder() = default;

HRESULT AudioEncoder::PrepareConversion() {
  AVChannelLayout in{};
  InputLayout(input_, &in);
  SwrContext* made = nullptr;
  int error = swr_alloc_set_opts2(&made, &context_->ch_layout, context_->sample_fmt, context_->sample_rate, &in,
                                  InputFormat(input_.bitsPerSample), input_.sampleRate, 0, nullptr);
  av_channel_layout_uninit(&in);
  resampler_.reset(made);
  if (error < 0 || swr_init(resampler_.get()) < 0) return MF_E_INVALIDMEDIATYPE;
  int frameSize = context_->frame_size > 0 ? context_->frame_size : kChunkFrames;
  queue_.reset(av_audio_fifo_alloc(context_->sample_fmt, context_->ch_layout.nb_channels, frameSize * 2));
  frame_.reset(av_frame_alloc());
  if (!queue_ || !frame_) return E_OUTOFMEMORY;
  frame_->format = context_->sample_fmt;
  frame_->sample_rate = context_->sample_rate;
  frame_->nb_samples = frameSize;
  if (av_channel_layout_copy(&frame_->ch_layout, &context_->ch_layout) < 0) return E_OUTOFMEMORY;
  return av_frame_get_buffer(frame_.get(), 0) < 0 ? E_OUTOFMEMORY : S_OK;
}

HRESULT AudioEncoder::Describe(AVCodecParameters* parameters) const {
  return avcodec_parameters_from_context(parameters, context_.get()) < 0 ? E_OUTOFMEMORY : S_OK;
}

// Converts count input frames (null: what the converter holds) onto the queue.
HRESULT AudioEncoder::Convert(const uint8_t* samples, int count) {
  int capacity = swr_get_out_samples(resampler_.get(), count);
  if (capacity < 0) return E_FAIL;
  if (capacity == 0) return S_OK;
  uint8_t** converted = nullptr;
  int channels = context_->ch_layout.nb_channels;
  if (av_samples_alloc_array_and_samples(&converted, nullptr, channels, capacity, context_->sample_fmt, 0) < 0) {
    return E_OUTOFMEMORY;
  }
  const uint8_t* in[1] = {samples};
  int made = swr_convert(resampler_.get(), converted, capacity, samples ? in : nullptr, count);
  int queued = made > 0 ? av_audio_fifo_write(queue_.get(), reinterpret_cast<void**>(converted), made) : made;
  av_freep(&converted[0]);
  av_freep(&converted);
  if (made < 0) return E_FAIL;
  return queued < made ? E_OUTOFMEMORY : S_OK;
}

HRESULT AudioEncoder::Encode(const BYTE* pcm, size_t bytes, std::vector<PacketPtr>* packets) {
  size_t blockBytes = size_t(input_.BlockBytes());
  size_t frames = bytes / blockBytes;
  for (size_t done = 0; done < frames;) {
    int count = int(std::min<size_t>(kChunkFrames, frames - done));
    const uint8_t* chunk = pcm + done * blockBytes;
    if (input_.bitsPerSample == 24) {
      unpacked_.resize(size_t(count) * size_t(input_.channels));
      Widen24(chunk, unpacked_.size(), unpacked_.data());
      chunk = reinterpret_cast<const uint8_t*>(unpacked_.data());
    }
    HRESULT hr = Convert(chunk, count);
    if (SUCCEEDED(hr)) hr = SendFrames(false, packets);
    if (FAILED(hr)) return hr;
    done += size_t(count);
  }
  return S_OK;
}

HRESULT AudioEncoder::Drain(std::vector<PacketPtr>* packets) {
  HRESULT hr = Convert(nullptr, 0);
  if (SUCCEEDED(hr)) hr = SendFrames(true, packets);
  if (SUCCEEDED(hr)) hr = EncodeFrame(context_.get(), nullptr, packets);
  return hr;
}

HRESULT AudioEncoder::SendFrames(bool final, std::vector<PacketPtr>* packets) {
  int frameSize = frame_->nb_samples;
  bool shortLastFrame = context_->codec->capabilities & AV_CODEC_CAP_SMALL_LAST_FRAME;
  for (;;) {
    int queued = av_audio_fifo_size(queue_.get());
    if (queued == 0 || (queued < frameSize && !final)) return S_OK;
    if (av_frame_make_writable(frame_.get()) < 0) return E_OUTOFMEMORY;
    int count = std::min(queued, frameSize);
    if (av_audio_fifo_read(queue_.get(), reinterpret_cast<void**>(frame_->data), count) < count) return E_FAIL;
    int sent = count < frameSize && shortLastFrame ? count : frameSize;
    av_samples_set_silence(frame_->data, count, frameSize - count, frame_->ch_layout.nb_channels,
                           AVSampleFormat(frame_->format));
    frame_->nb_samples = sent;
    frame_->pts = nextPts_;
    nextPts_ += count;
    HRESULT hr = EncodeFrame(context_.get(), frame_.get(), packets);
    frame_->nb_samples = frameSize;
    if (FAILED(hr)) return hr;
  }
}

}  // namespace tessel::platform
