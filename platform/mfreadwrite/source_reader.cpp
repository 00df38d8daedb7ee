// SourceReader: stream walk, type negotiation, sample reads, seeking and duration.
#include "mfreadwrite/source_reader.h"

#include <new>

#include "mfapi.h"
#include "mferror.h"
#include "mfreadwrite/av_status.h"
#include "mfreadwrite/native_type.h"
#include "platform_counters.h"

namespace tessel::platform {

namespace {

// Demuxed packets that selected streams may hold before reading fails: a stream that is
// selected and never read can't make the reader keep the whole file.
constexpr size_t kMaxQueuedBytes = size_t(256) << 20;
// Seek attempts that step back further when the landing key frame lies behind the target.
constexpr int kMaxSeekAttempts = 8;
// Packets read after a seek while looking for the reference stream's first packet.
constexpr int kMaxPeekPackets = 4096;

HRESULT CopyType(IMFMediaType* type, IMFMediaType** copy) {
  if (!copy) return E_POINTER;
  ComPtr<IMFMediaType> made;
  HRESULT hr = MFCreateMediaType(&made);
  if (SUCCEEDED(hr)) hr = type->CopyAllItems(made.Get());
  if (SUCCEEDED(hr)) *copy = made.Detach();
  return hr;
}

}  // namespace

SourceReader::SourceReader(std::unique_ptr<Demuxer> demuxer, VideoProcessing processing)
    : demuxer_(std::move(demuxer)), processing_(processing) {
  ++GetCounters().liveSourceReaders;
}

SourceReader::~SourceReader() { --GetCounters().liveSourceReaders; }

HRESULT SourceReader::Create(std::unique_ptr<Demuxer> demuxer, VideoProcessing processing,
                             IMFSourceReader** reader) {
  ComPtr<SourceReader> made;
  made.Attach(new (std::nothrow) SourceReader(std::move(demuxer), processing));
  if (!made) return E_OUTOFMEMORY;
  HRESULT hr = made->DescribeStreams();
  if (SUCCEEDED(hr)) *reader = made.Detach();
  return hr;
}

// Streams in container order; the first video and the first audio stream start selected.
HRESULT SourceReader::DescribeStreams() {
  AVFormatContext* format = demuxer_->Format();
  bool videoSelected = false;
  bool audioSelected = false;
  for (unsigned i = 0; i < format->nb_streams; ++i) {
    AVStream* stream = format->streams[i];
    ComPtr<IMFMediaType> native;
    HRESULT hr = CreateNativeType(*stream, &native);
    if (FAILED(hr)) return hr;
    auto entry = std::make_unique<ReaderStream>(stream, native);
    if (entry->IsVideo() && !videoSelected) entry->selected = videoSelected = true;
    if (entry->IsAudio() && !audioSelected) entry->selected = audioSelected = true;
    streams_.push_back(std::move(entry));
  }
  return S_OK;
}

ReaderStream* SourceReader::Find(DWORD streamIndex) {
  if (streamIndex == MF_SOURCE_READER_FIRST_VIDEO_STREAM || streamIndex == MF_SOURCE_READER_FIRST_AUDIO_STREAM) {
    bool video = streamIndex == MF_SOURCE_READER_FIRST_VIDEO_STREAM;
    for (auto& stream : streams_) {
      if (video ? stream->IsVideo() : stream->IsAudio()) return stream.get();
    }
    return nullptr;
  }
  return streamIndex < streams_.size() ? streams_[streamIndex].get() : nullptr;
}

int SourceReader::IndexOf(const ReaderStream* stream) const {
  for (size_t i = 0; i < streams_.size(); ++i) {
    if (streams_[i].get() == stream) return int(i);
  }
  return -1;
}

HRESULT SourceReader::GetStreamSelection(DWORD streamIndex, BOOL* selected) {
  if (!selected) return E_POINTER;
  std::lock_guard lock(mutex_);
  ReaderStream* stream = Find(streamIndex);
  if (!stream) return MF_E_INVALIDSTREAMNUMBER;
  *selected = stream->selected;
  return S_OK;
}

// A stream that is deselected drops what was read ahead for it.
HRESULT SourceReader::SetStreamSelection(DWORD streamIndex, BOOL selected) {
  std::lock_guard lock(mutex_);
  std::vector<ReaderStream*> chosen;
  if (streamIndex == MF_SOURCE_READER_ALL_STREAMS) {
    for (auto& stream : streams_) chosen.push_back(stream.get());
  } else if (ReaderStream* stream = Find(streamIndex)) {
    chosen.push_back(stream);
  } else {
    return MF_E_INVALIDSTREAMNUMBER;
  }
  for (ReaderStream* stream : chosen) {
    if (stream->selected && !selected) stream->Reset();
    stream->selected = selected != FALSE;
  }
  return S_OK;
}

HRESULT SourceReader::GetNativeMediaType(DWORD streamIndex, DWORD typeIndex, IMFMediaType** mediaType) {
  if (!mediaType) return E_POINTER;
  std::lock_guard lock(mutex_);
  ReaderStream* stream = Find(streamIndex);
  if (!stream) return MF_E_INVALIDSTREAMNUMBER;
  if (typeIndex != 0) return MF_E_NO_MORE_TYPES;
  return CopyType(stream->NativeType(), mediaType);
}

HRESULT SourceReader::GetCurrentMediaType(DWORD streamIndex, IMFMediaType** mediaType) {
  if (!mediaType) return E_POINTER;
  std::lock_guard lock(mutex_);
  ReaderStream* stream = Find(streamIndex);
  if (!stream) return MF_E_INVALIDSTREAMNUMBER;
  return CopyType(stream->CurrentType(), mediaType);
}

HRESULT SourceReader::SetCurrentMediaType(DWORD streamIndex, DWORD* /*reserved*/, IMFMediaType* mediaType) {
  if (!mediaType) return E_POINTER;
  std::lock_guard lock(mutex_);
  ReaderStream* stream = Find(streamIndex);
  if (!stream) return MF_E_INVALIDSTREAMNUMBER;
  return stream->SetOutput(mediaType, processing_);
}

HRESULT SourceReader::SetCurrentPosition(REFGUID timeFormat, REFPROPVARIANT position) {
  if (timeFormat != GUID_NULL) return MF_E_UNSUPPORTED_TIME_FORMAT;
  if (position.vt != VT_I8) return E_INVALIDARG;
  std::lock_guard lock(mutex_);
  if (!demuxer_->Seekable()) return MF_E_BYTESTREAM_NOT_SEEKABLE;
  return SeekTo(std::max<int64_t>(position.hVal.QuadPart, 0));
}

// The first selected video stream decides where a seek lands; other streams follow it.
ReaderStream* SourceReader::SeekReference() {
  for (auto& stream : streams_) {
    if (stream->selected && stream->IsVideo()) return stream.get();
  }
  return nullptr;
}

// Seeks to the key frame at or before ticks. Containers index key frames by decode
// time, which can lie before the frame's presentation time; when the landing key frame
// shows after the target, the seek aims earlier until it doesn't.
HRESULT SourceReader::SeekTo(int64_t ticks) {
  ReaderStream* reference = SeekReference();
  int64_t aim = ticks;
  for (int attempt = 0; attempt < kMaxSeekAttempts; ++attempt) {
    HRESULT hr = demuxer_->SeekBefore(reference ? IndexOf(reference) : -1, aim);
    if (FAILED(hr)) return hr;
    for (auto& stream : streams_) stream->Reset();
    fileEnded_ = false;
    int64_t landed = INT64_MIN;
    if (reference && FAILED(hr = FirstTicksAfterSeek(*reference, &landed))) return hr;
    if (landed == INT64_MIN || landed <= ticks || aim == 0) return S_OK;
    aim = std::max<int64_t>(0, aim - std::max<int64_t>(landed - ticks, kTicksPerSecond / 2) * (attempt + 1));
  }
  return S_OK;
}

// The presentation time of the first packet of stream after a seek, INT64_MIN if none.
HRESULT SourceReader::FirstTicksAfterSeek(ReaderStream& stream, int64_t* ticks) {
  for (int read = 0; read < kMaxPeekPackets && !stream.HasQueued(); ++read) {
    HRESULT hr = DemuxOne();
    if (FAILED(hr)) return hr;
    if (hr == S_FALSE) return S_OK;
  }
  if (!stream.HasQueued()) return S_OK;
  const AVPacket& packet = stream.FirstQueued();
  int64_t timestamp = packet.pts != AV_NOPTS_VALUE ? packet.pts : packet.dts;
  if (timestamp != AV_NOPTS_VALUE) {
    *ticks = av_rescale_q(timestamp, stream.Stream()->time_base, {1, int(kTicksPerSecond)});
  }
  return S_OK;
}

HRESULT SourceReader::DemuxOne() {
  PacketPtr packet;
  HRESULT hr = demuxer_->ReadPacket(&packet);
  if (hr == S_FALSE) fileEnded_ = true;
  if (hr != S_OK) return hr;
  int index = packet->stream_index;
  if (index < 0 || size_t(index) >= streams_.size() || !streams_[index]->selected) return S_OK;
  size_t queued = 0;
  for (auto& stream : streams_) queued += stream->QueuedBytes();
  if (queued > kMaxQueuedBytes) return E_OUTOFMEMORY;
  streams_[index]->Queue(std::move(packet), packetOrder_++);
  return S_OK;
}

// Each pass gives a sample or the end, or feeds one packet, or demuxes one: the file
// bounds the loop.
HRESULT SourceReader::ReadFrom(ReaderStream& stream, Pulled* result, IMFSample** sample) {
  for (;;) {
    HRESULT hr = stream.Pull(result, sample);
    if (FAILED(hr) || *result != Pulled::kNeedInput) return hr;
    if (stream.HasQueued()) {
      hr = stream.FeedQueued();
    } else if (fileEnded_) {
      hr = stream.FeedEnd();
    } else {
      hr = DemuxOne();
    }
    if (FAILED(hr)) return hr;
  }
}

// Feeds the selected stream's packet that lies first in the file; S_FALSE if none.
HRESULT SourceReader::FeedNextQueued() {
  ReaderStream* first = nullptr;
  for (auto& stream : streams_) {
    if (!stream->selected || !stream->HasQueued()) continue;
    if (!first || stream->FirstQueuedOrder() < first->FirstQueuedOrder()) first = stream.get();
  }
  return first ? first->FeedQueued() : S_FALSE;
}

HRESULT SourceReader::ReadAny(ReaderStream** from, Pulled* result, IMFSample** sample) {
  for (;;) {
    bool open = false;
    for (auto& stream : streams_) {
      if (!stream->selected || stream->endReported) continue;
      open = true;
      HRESULT hr = stream->Pull(result, sample);
      if (FAILED(hr)) return hr;
      if (*result != Pulled::kNeedInput) {
        *from = stream.get();
        return S_OK;
      }
    }
    if (!open) {
      *result = Pulled::kEnded;
      return S_OK;
    }
    HRESULT hr = FeedNextQueued();
    if (hr == S_FALSE) {
      if (fileEnded_) {
        for (auto& stream : streams_) {
          if (stream->selected && FAILED(hr = stream->FeedEnd())) return hr;
        }
      } else {
        hr = DemuxOne();
      }
    }
    if (FAILED(hr)) return hr;
  }
}

HRESULT SourceReader::ReadSample(DWORD streamIndex, DWORD /*controlFlags*/, DWORD* actualStreamIndex,
                                 DWORD* streamFlags, LONGLONG* timestamp, IMFSample** sample) {
  if (!streamFlags || !sample) return E_POINTER;
  *streamFlags = 0;
  *sample = nullptr;
  if (timestamp) *timestamp = 0;
  if (actualStreamIndex) *actualStreamIndex = streamIndex;
  HRESULT injected = GetCounters().failNextReadSample.exchange(0);
  if (injected != 0) return injected;
  std::lock_guard lock(mutex_);
  ReaderStream* from = nullptr;
  Pulled result = Pulled::kEnded;
  HRESULT hr;
  if (streamIndex == MF_SOURCE_READER_ANY_STREAM) {
    hr = ReadAny(&from, &result, sample);
  } else {
    from = Find(streamIndex);
    if (!from) return MF_E_INVALIDSTREAMNUMBER;
    if (!from->selected) return MF_E_INVALIDREQUEST;
    hr = ReadFrom(*from, &result, sample);
  }
  if (FAILED(hr)) return hr;
  if (actualStreamIndex && from) *actualStreamIndex = DWORD(IndexOf(from));
  if (result == Pulled::kEnded) {
    if (from) from->endReported = true;
    *streamFlags |= MF_SOURCE_READERF_ENDOFSTREAM;
  } else if (timestamp) {
    (*sample)->GetSampleTime(timestamp);
  }
  return S_OK;
}

HRESULT SourceReader::Flush(DWORD streamIndex) {
  std::lock_guard lock(mutex_);
  if (streamIndex == MF_SOURCE_READER_ALL_STREAMS) {
    for (auto& stream : streams_) stream->Reset();
    return S_OK;
  }
  ReaderStream* stream = Find(streamIndex);
  if (!stream) return MF_E_INVALIDSTREAMNUMBER;
  stream->Reset();
  return S_OK;
}

HRESULT SourceReader::GetServiceForStream(DWORD, REFGUID, REFIID, LPVOID* object) {
  if (object) *object = nullptr;
  return MF_E_UNSUPPORTED_SERVICE;
}

HRESULT SourceReader::GetPresentationAttribute(DWORD streamIndex, REFGUID attribute, PROPVARIANT* value) {
  if (!value) return E_POINTER;
  std::lock_guard lock(mutex_);
  if (streamIndex != MF_SOURCE_READER_MEDIASOURCE) {
    return Find(streamIndex) ? MF_E_ATTRIBUTENOTFOUND : MF_E_INVALIDSTREAMNUMBER;
  }
  if (attribute != MF_PD_DURATION) return MF_E_ATTRIBUTENOTFOUND;
  int64_t duration = demuxer_->DurationTicks();
  if (duration < 0) return MF_E_ATTRIBUTENOTFOUND;
  PropVariantInit(value);
  value->vt = VT_UI8;
  value->uhVal.QuadPart = uint64_t(duration);
  return S_OK;
}

}  // namespace tessel::platform
