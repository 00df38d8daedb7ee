// AudioConverter. 24-bit PCM is made as 32-bit and packed to its three high bytes.
#include "mfreadwrite/audio_converter.h"

#include "mferror.h"
#include "mfplat/buffers.h"

namespace tessel::platform {

namespace {

// Packs 32-bit samples to 24 bits in place; returns the bytes written.
size_t PackTo24Bits(uint8_t* data, size_t samples) {
  for (size_t i = 0; i < samples; ++i) {
    data[i * 3 + 0] = data[i * 4 + 1];
    data[i * 3 + 1] = data[i * 4 + 2];
    data[i * 3 + 2] = data[i * 4 + 3];
  }
  return samples * 3;
}

bool SameLayout(const AVChannelLayout& a, const AVChannelLayout& b) { return av_channel_layout_compare(&a, &b) == 0; }

}  // namespace

HRESULT AudioConverter::Prepare(const AVFrame& frame, const AudioOutput& output) {
  if (resampler_ && inputRate_ == frame.sample_rate && inputFormat_ == frame.format &&
      SameLayout(inputLayout_, frame.ch_layout)) {
    return S_OK;
  }
  resampler_.reset();
  AVChannelLayout in{};
  if (frame.ch_layout.order == AV_CHANNEL_ORDER_UNSPEC) av_channel_layout_default(&in, frame.ch_layout.nb_channels);
  else av_channel_layout_copy(&in, &frame.ch_layout);
  AVChannelLayout out{};
  av_channel_layout_default(&out, int(output.channels));
  SwrContext* made = nullptr;
  int error = swr_alloc_set_opts2(&made, &out, output.sampleFormat, int(output.rate), &in,
                                  static_cast<AVSampleFormat>(frame.format), frame.sample_rate, 0, nullptr);
  ResamplerPtr resampler(made);
  av_channel_layout_uninit(&out);
  if (error >= 0) error = swr_init(resampler.get());
  av_channel_layout_uninit(&in);
  if (error < 0) return MF_E_INVALID_STREAM_DATA;
  resampler_ = std::move(resampler);
  av_channel_layout_uninit(&inputLayout_);
  av_channel_layout_copy(&inputLayout_, &frame.ch_layout);
  inputRate_ = frame.sample_rate;
  inputFormat_ = frame.format;
  return S_OK;
}

HRESULT AudioConverter::Convert(const AVFrame* frame, const AudioOutput& output, IMFMediaBuffer** buffer,
                                int* frames) {
  *buffer = nullptr;
  *frames = 0;
  if (frame) {
    if (frame->sample_rate <= 0 || frame->ch_layout.nb_channels <= 0) return MF_E_INVALID_STREAM_DATA;
    HRESULT hr = Prepare(*frame, output);
    if (FAILED(hr)) return hr;
  }
  if (!resampler_) return S_OK;
  int capacity = swr_get_out_samples(resampler_.get(), frame ? frame->nb_samples : 0);
  if (capacity <= 0) return S_OK;
  size_t sampleBytes = size_t(av_get_bytes_per_sample(output.sampleFormat)) * output.channels;
  ComPtr<IMFMediaBuffer> made;
  HRESULT hr = CreateMemoryBuffer(DWORD(std::min(size_t(capacity) * sampleBytes, kMaxBufferBytes)), &made);
  if (FAILED(hr)) return hr;
  BYTE* data = nullptr;
  made->Lock(&data, nullptr, nullptr);
  uint8_t* planes[1] = {data};
  int converted = swr_convert(resampler_.get(), planes, capacity, frame ? const_cast<const uint8_t**>(frame->extended_data) : nullptr,
                              frame ? frame->nb_samples : 0);
  size_t bytes = converted > 0 ? size_t(converted) * sampleBytes : 0;
  if (converted > 0 && output.bits == 24) bytes = PackTo24Bits(data, size_t(converted) * output.channels);
  made->Unlock();
  if (converted < 0) return MF_E_INVALID_STREAM_DATA;
  if (converted == 0) return S_OK;
  made->SetCurrentLength(DWORD(bytes));
  *buffer = made.Detach();
  *frames = converted;
  return S_OK;
}

}  // namespace tessel::platform
