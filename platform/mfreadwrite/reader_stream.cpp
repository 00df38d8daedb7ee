// ReaderStream: decoding and converting one stream's packets into samples.
#include "mfreadwrite/reader_stream.h"

#include <cstring>

#include "mfapi.h"
#include "mferror.h"
#include "mfreadwrite/av_status.h"

namespace tessel::platform {

namespace {

// Outputs the decoder may refuse in a row before the stream counts as broken.
constexpr int kMaxFailures = 4096;

// Whether wanted asks for the stream as it is stored: its own subtype and, for sound,
// no other sample size, rate or channel count.
bool AsStored(IMFMediaType* wanted, IMFMediaType* native) {
  GUID x, y;
  if (FAILED(wanted->GetGUID(MF_MT_SUBTYPE, &x)) || FAILED(native->GetGUID(MF_MT_SUBTYPE, &y)) || x != y) {
    return false;
  }
  for (const GUID* key : {&MF_MT_AUDIO_BITS_PER_SAMPLE, &MF_MT_AUDIO_SAMPLES_PER_SECOND, &MF_MT_AUDIO_NUM_CHANNELS}) {
    UINT32 asked = 0, stored = 0;
    if (SUCCEEDED(wanted->GetUINT32(*key, &asked)) && (FAILED(native->GetUINT32(*key, &stored)) || asked != stored)) {
      return false;
    }
  }
  return true;
}

HRESULT NewSample(IMFMediaBuffer* buffer, int64_t time, int64_t duration, bool cleanPoint, IMFSample** sample) {
  ComPtr<IMFSample> made;
  HRESULT hr = MFCreateSample(&made);
  if (SUCCEEDED(hr)) hr = made->AddBuffer(buffer);
  if (SUCCEEDED(hr)) hr = made->SetSampleTime(time);
  if (SUCCEEDED(hr)) hr = made->SetSampleDuration(duration);
  if (SUCCEEDED(hr)) hr = made->SetUINT32(MFSampleExtension_CleanPoint, cleanPoint ? TRUE : FALSE);
  if (SUCCEEDED(hr)) *sample = made.Detach();
  return hr;
}

}  // namespace

ReaderStream::ReaderStream(AVStream* stream, ComPtr<IMFMediaType> native)
    : stream_(stream), native_(native), current_(native) {}

HRESULT ReaderStream::SetOutput(IMFMediaType* wanted, VideoProcessing processing) {
  GUID major;
  if (FAILED(wanted->GetGUID(MF_MT_MAJOR_TYPE, &major))) return MF_E_INVALIDMEDIATYPE;
  if (AsStored(wanted, native_.Get())) {
    mode_ = Mode::kPackets;
    current_ = native_;
    return S_OK;
  }
  HRESULT hr = MF_E_INVALIDMEDIATYPE;
  VideoOutput video{};
  AudioOutput audio{};
  if (IsVideo()) hr = AcceptVideoOutput(wanted, native_.Get(), processing, &video);
  if (IsAudio()) hr = AcceptAudioOutput(wanted, native_.Get(), &audio);
  if (SUCCEEDED(hr)) hr = OpenDecoder();
  ComPtr<IMFMediaType> current;
  if (SUCCEEDED(hr) && IsVideo()) hr = CreateVideoCurrentType(video, native_.Get(), &current);
  if (SUCCEEDED(hr) && IsAudio()) hr = CreateAudioCurrentType(audio, &current);
  if (FAILED(hr)) return hr;
  if (IsVideo() && (!pool_ || pool_->BlockBytes() != video.layout.bytes)) {
    pool_ = std::make_shared<BlockPool>(video.layout.bytes);
  }
  video_ = video;
  audio_ = audio;
  mode_ = IsVideo() ? Mode::kVideo : Mode::kAudio;
  current_ = current;
  return S_OK;
}

HRESULT ReaderStream::OpenDecoder() {
  if (decoder_) return S_OK;
  const AVCodec* codec = avcodec_find_decoder(stream_->codecpar->codec_id);
  if (!codec) return MF_E_TOPO_CODEC_NOT_FOUND;
  CodecContextPtr decoder(avcodec_alloc_context3(codec));
  FramePtr frame(av_frame_alloc());
  if (!decoder || !frame) return E_OUTOFMEMORY;
  if (avcodec_parameters_to_context(decoder.get(), stream_->codecpar) < 0) return MF_E_INVALIDMEDIATYPE;
  decoder->pkt_timebase = stream_->time_base;
  decoder->thread_count = 0;
  decoder->thread_type = FF_THREAD_FRAME | FF_THREAD_SLICE;
  if (avcodec_open2(decoder.get(), codec, nullptr) < 0) return MF_E_INVALIDMEDIATYPE;
  decoder_ = std::move(decoder);
  frame_ = std::move(frame);
  return S_OK;
}

void ReaderStream::Queue(PacketPtr packet, uint64_t order) {
  queuedBytes_ += size_t(packet->size);
  queue_.push_back({std::move(packet), order});
}

HRESULT ReaderStream::FeedQueued() {
  QueuedPacket next = std::move(queue_.front());
  queue_.pop_front();
  queuedBytes_ -= size_t(next.packet->size);
  if (mode_ == Mode::kPackets) {
    pending_ = std::move(next.packet);
    return S_OK;
  }
  return Feed(next.packet.get());
}

HRESULT ReaderStream::FeedEnd() {
  if (inputEnded_) return S_OK;
  inputEnded_ = true;
  return mode_ == Mode::kPackets ? S_OK : Feed(nullptr);
}

// A packet the decoder refuses is dropped, as a damaged stretch is; the decoder
// conceals what it can.
HRESULT ReaderStream::Feed(const AVPacket* packet) {
  int error = avcodec_send_packet(decoder_.get(), packet);
  if (error == AVERROR(ENOMEM)) return E_OUTOFMEMORY;
  if (error < 0 && error != AVERROR_EOF && ++failedPackets_ > kMaxFailures) return MF_E_INVALID_STREAM_DATA;
  return S_OK;
}

HRESULT ReaderStream::Pull(Pulled* result, IMFSample** sample) {
  *sample = nullptr;
  return mode_ == Mode::kPackets ? PullPacket(result, sample) : PullDecoded(result, sample);
}

HRESULT ReaderStream::PullPacket(Pulled* result, IMFSample** sample) {
  if (!pending_) {
    *result = inputEnded_ ? Pulled::kEnded : Pulled::kNeedInput;
    return S_OK;
  }
  PacketPtr packet = std::move(pending_);
  ComPtr<IMFMediaBuffer> buffer;
  HRESULT hr = CreateMemoryBuffer(DWORD(packet->size), &buffer);
  if (FAILED(hr)) return hr;
  BYTE* data = nullptr;
  buffer->Lock(&data, nullptr, nullptr);
  if (packet->size > 0) std::memcpy(data, packet->data, size_t(packet->size));
  buffer->Unlock();
  buffer->SetCurrentLength(DWORD(packet->size));
  int64_t time = Ticks(packet->pts != AV_NOPTS_VALUE ? packet->pts : packet->dts);
  hr = NewSample(buffer.Get(), time == INT64_MIN ? nextTicks_ : time, std::max<int64_t>(Ticks(packet->duration), 0),
                 (packet->flags & AV_PKT_FLAG_KEY) != 0, sample);
  if (SUCCEEDED(hr)) *result = Pulled::kSample;
  return hr;
}

HRESULT ReaderStream::PullDecoded(Pulled* result, IMFSample** sample) {
  for (int failures = 0; failures < kMaxFailures; ++failures) {
    if (decoderEnded_) {
      HRESULT hr = mode_ == Mode::kAudio ? MakeAudioSample(nullptr, sample) : S_OK;
      *result = *sample ? Pulled::kSample : Pulled::kEnded;
      return hr;
    }
    int error = avcodec_receive_frame(decoder_.get(), frame_.get());
    if (error == AVERROR(EAGAIN)) {
      *result = inputEnded_ ? Pulled::kEnded : Pulled::kNeedInput;
      return S_OK;
    }
    if (error == AVERROR_EOF) {
      decoderEnded_ = true;
      continue;
    }
    if (error == AVERROR(ENOMEM)) return E_OUTOFMEMORY;
    if (error < 0) continue;
    HRESULT hr = mode_ == Mode::kVideo ? MakeVideoSample(sample) : MakeAudioSample(frame_.get(), sample);
    av_frame_unref(frame_.get());
    if (hr == MF_E_INVALID_STREAM_DATA) continue;  // a damaged frame that can't be converted is dropped
    if (FAILED(hr)) return hr;
    if (*sample) {
      failedPackets_ = 0;
      *result = Pulled::kSample;
      return S_OK;
    }
  }
  return MF_E_INVALID_STREAM_DATA;
}

HRESULT ReaderStream::MakeVideoSample(IMFSample** sample) {
  ComPtr<IMFMediaBuffer> buffer;
  HRESULT hr = CreateImageBuffer(video_.layout, false, pool_, &buffer);
  if (FAILED(hr)) return hr;
  BYTE* data = nullptr;
  buffer->Lock(&data, nullptr, nullptr);
  hr = videoConverter_.Convert(*frame_, video_, data);
  buffer->Unlock();
  if (FAILED(hr)) return hr;
  AVRational rate = stream_->avg_frame_rate.num > 0 ? stream_->avg_frame_rate : stream_->r_frame_rate;
  int64_t duration = Ticks(frame_->pkt_duration);
  if (duration <= 0 && rate.num > 0 && rate.den > 0) duration = av_rescale(kTicksPerSecond, rate.den, rate.num);
  int64_t time = Ticks(frame_->best_effort_timestamp);
  if (time == INT64_MIN) time = nextTicks_;
  nextTicks_ = time + std::max<int64_t>(duration, 0);
  return NewSample(buffer.Get(), time, std::max<int64_t>(duration, 0), frame_->key_frame != 0, sample);
}

HRESULT ReaderStream::MakeAudioSample(const AVFrame* frame, IMFSample** sample) {
  ComPtr<IMFMediaBuffer> buffer;
  int frames = 0;
  HRESULT hr = audioConverter_.Convert(frame, audio_, &buffer, &frames);
  if (FAILED(hr) || !buffer) return hr;
  int64_t time = frame ? Ticks(frame->best_effort_timestamp) : INT64_MIN;
  if (time == INT64_MIN) time = nextTicks_;
  int64_t duration = av_rescale(frames, kTicksPerSecond, audio_.rate);
  nextTicks_ = time + duration;
  return NewSample(buffer.Get(), time, duration, true, sample);
}

void ReaderStream::Reset() {
  queue_.clear();
  queuedBytes_ = 0;
  pending_.reset();
  inputEnded_ = false;
  decoderEnded_ = false;
  endReported = false;
  failedPackets_ = 0;
  if (decoder_) avcodec_flush_buffers(decoder_.get());
  audioConverter_.Reset();
}

int64_t ReaderStream::Ticks(int64_t timestamp) const {
  if (timestamp == AV_NOPTS_VALUE) return INT64_MIN;
  return av_rescale_q(timestamp, stream_->time_base, {1, int(kTicksPerSecond)});
}

}  // namespace tessel::platform
