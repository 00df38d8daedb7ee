// SinkWriter: the order of calls, the streams, and the packets on their way to the file.
#include "mfreadwrite/sink_writer.h"

#include <algorithm>
#include <new>

#include "mferror.h"
#include "mfreadwrite/media_time.h"
#include "mfreadwrite/sample_bytes.h"
#include "platform_counters.h"

namespace tessel::platform {

namespace {

void Add(MF_SINK_WRITER_STATISTICS& total, const MF_SINK_WRITER_STATISTICS& part) {
  total.llLastTimestampReceived = std::max(total.llLastTimestampReceived, part.llLastTimestampReceived);
  total.llLastTimestampEncoded = std::max(total.llLastTimestampEncoded, part.llLastTimestampEncoded);
  total.llLastTimestampProcessed = std::max(total.llLastTimestampProcessed, part.llLastTimestampProcessed);
  total.qwNumSamplesReceived += part.qwNumSamplesReceived;
  total.qwNumSamplesEncoded += part.qwNumSamplesEncoded;
  total.qwNumSamplesProcessed += part.qwNumSamplesProcessed;
  total.qwByteCountProcessed += part.qwByteCountProcessed;
}

}  // namespace

SinkWriter::SinkWriter(const SinkContainer& container, std::unique_ptr<Muxer> muxer)
    : container_(container), muxer_(std::move(muxer)) {
  ++GetCounters().liveSinkWriters;
}

SinkWriter::~SinkWriter() { --GetCounters().liveSinkWriters; }

HRESULT SinkWriter::Create(const SinkContainer& container, std::unique_ptr<OutputFile> file, IMFSinkWriter** writer) {
  std::unique_ptr<Muxer> muxer;
  HRESULT hr = Muxer::Create(container, std::move(file), &muxer);
  if (FAILED(hr)) return hr;
  SinkWriter* made = new (std::nothrow) SinkWriter(container, std::move(muxer));
  if (!made) return E_OUTOFMEMORY;
  *writer = made;
  return S_OK;
}

SinkWriter::Stream* SinkWriter::Find(DWORD streamIndex) {
  return streamIndex < streams_.size() ? &streams_[streamIndex] : nullptr;
}

HRESULT SinkWriter::CheckWriting(DWORD streamIndex) {
  if (!Find(streamIndex)) return MF_E_INVALIDSTREAMNUMBER;
  return state_ == State::kWriting ? S_OK : MF_E_INVALIDREQUEST;
}

HRESULT SinkWriter::AddStream(IMFMediaType* targetMediaType, DWORD* streamIndex) {
  if (!targetMediaType || !streamIndex) return E_POINTER;
  std::lock_guard lock(mutex_);
  if (state_ != State::kSettingUp) return MF_E_INVALIDREQUEST;
  Stream added;
  ContainerNeeds needs{muxer_->WantsGlobalHeaders(), container_.decodeTimes};
  HRESULT hr = CreateSinkStream(targetMediaType, container_, needs, &added.stream);
  if (FAILED(hr)) return hr;
  streams_.push_back(std::move(added));
  *streamIndex = DWORD(streams_.size() - 1);
  return S_OK;
}

HRESULT SinkWriter::SetInputMediaType(DWORD streamIndex, IMFMediaType* inputMediaType,
                                      IMFAttributes* /*encodingParameters*/) {
  if (!inputMediaType) return E_POINTER;
  std::lock_guard lock(mutex_);
  Stream* stream = Find(streamIndex);
  if (!stream) return MF_E_INVALIDSTREAMNUMBER;
  if (state_ != State::kSettingUp) return MF_E_INVALIDREQUEST;
  return stream->stream->SetInputType(inputMediaType);
}

// The container's header names every stream, so each needs its input type and open
// encoder by now: this writer doesn't pass compressed samples through.
HRESULT SinkWriter::BeginWriting() {
  std::lock_guard lock(mutex_);
  if (state_ != State::kSettingUp || streams_.empty()) return MF_E_INVALIDREQUEST;
  for (Stream& stream : streams_) {
    if (!stream.stream->HasInputType()) return MF_E_TRANSFORM_TYPE_NOT_SET;
  }
  // From here a failure leaves the muxer half made, and the writer can't begin again.
  state_ = State::kBroken;
  for (Stream& stream : streams_) {
    AVCodecParameters* parameters = avcodec_parameters_alloc();
    if (!parameters) return E_OUTOFMEMORY;
    AVRational frameRate{};
    HRESULT hr = stream.stream->Describe(parameters, &stream.timeBase, &frameRate);
    if (SUCCEEDED(hr)) hr = muxer_->AddStream(*parameters, stream.timeBase, frameRate, &stream.muxerIndex);
    avcodec_parameters_free(&parameters);
    if (FAILED(hr)) return hr;
  }
  HRESULT hr = muxer_->Begin();
  if (SUCCEEDED(hr)) state_ = State::kWriting;
  return hr;
}

HRESULT SinkWriter::Deliver(Stream& stream, std::vector<PacketPtr>& packets) {
  for (PacketPtr& packet : packets) {
    MF_SINK_WRITER_STATISTICS& statistics = stream.statistics;
    ++statistics.qwNumSamplesEncoded;
    ++statistics.qwNumSamplesProcessed;
    statistics.qwByteCountProcessed += QWORD(packet->size);
    statistics.llLastTimestampEncoded = statistics.llLastTimestampProcessed = UnitsToTicks(packet->pts, stream.timeBase);
    HRESULT hr = muxer_->Write(stream.muxerIndex, std::move(packet));
    if (FAILED(hr)) return hr;
  }
  return S_OK;
}

HRESULT SinkWriter::WriteSample(DWORD streamIndex, IMFSample* sample) {
  if (!sample) return E_POINTER;
  std::lock_guard lock(mutex_);
  HRESULT hr = CheckWriting(streamIndex);
  if (FAILED(hr)) return hr;
  Stream& stream = streams_[streamIndex];
  ++stream.statistics.qwNumSamplesReceived;
  LONGLONG time = 0;
  if (FAILED(sample->GetSampleTime(&time))) return MF_E_NO_SAMPLE_TIMESTAMP;
  stream.statistics.llLastTimestampReceived = time;
  SampleBytes bytes;
  hr = bytes.Lock(sample);
  if (FAILED(hr)) return hr;
  std::vector<PacketPtr> packets;
  hr = stream.stream->Write(time, bytes.Data(), bytes.Length(), &packets);
  HRESULT delivered = Deliver(stream, packets);
  if (SUCCEEDED(hr)) hr = delivered;
  return SUCCEEDED(hr) ? muxer_->Flush() : hr;
}

// A gap needs nothing here: the next sample's time places it.
HRESULT SinkWriter::SendStreamTick(DWORD streamIndex, LONGLONG /*timestamp*/) {
  std::lock_guard lock(mutex_);
  return CheckWriting(streamIndex);
}

// Markers are only reported through the callback of an asynchronous writer.
HRESULT SinkWriter::PlaceMarker(DWORD streamIndex, LPVOID /*context*/) {
  std::lock_guard lock(mutex_);
  HRESULT hr = CheckWriting(streamIndex);
  return SUCCEEDED(hr) ? MF_E_INVALIDREQUEST : hr;
}

HRESULT SinkWriter::NotifyEndOfSegment(DWORD streamIndex) {
  std::lock_guard lock(mutex_);
  if (streamIndex == MF_SINK_WRITER_ALL_STREAMS) return state_ == State::kWriting ? S_OK : MF_E_INVALIDREQUEST;
  return CheckWriting(streamIndex);
}

// Samples are encoded as they come, so nothing waits here to be dropped.
HRESULT SinkWriter::Flush(DWORD streamIndex) {
  std::lock_guard lock(mutex_);
  if (streamIndex == MF_SINK_WRITER_ALL_STREAMS) return state_ == State::kWriting ? S_OK : MF_E_INVALIDREQUEST;
  return CheckWriting(streamIndex);
}

// Drains every encoder and finishes the file, which is closed whatever the outcome.
HRESULT SinkWriter::Finalize() {
  std::lock_guard lock(mutex_);
  if (state_ != State::kWriting) return MF_E_INVALIDREQUEST;
  state_ = State::kFinalized;
  HRESULT first = S_OK;
  for (Stream& stream : streams_) {
    std::vector<PacketPtr> packets;
    HRESULT hr = stream.stream->Drain(&packets);
    HRESULT delivered = Deliver(stream, packets);
    if (SUCCEEDED(first)) first = FAILED(hr) ? hr : delivered;
  }
  HRESULT finished = muxer_->Finish();
  muxer_.reset();
  return FAILED(first) ? first : finished;
}

HRESULT SinkWriter::GetServiceForStream(DWORD /*streamIndex*/, REFGUID /*service*/, REFIID /*riid*/,
                                        LPVOID* object) {
  if (!object) return E_POINTER;
  *object = nullptr;
  return MF_E_UNSUPPORTED_SERVICE;
}

HRESULT SinkWriter::GetStatistics(DWORD streamIndex, MF_SINK_WRITER_STATISTICS* stats) {
  if (!stats) return E_POINTER;
  if (stats->cb != sizeof(MF_SINK_WRITER_STATISTICS)) return E_INVALIDARG;
  std::lock_guard lock(mutex_);
  MF_SINK_WRITER_STATISTICS total{};
  if (streamIndex == MF_SINK_WRITER_ALL_STREAMS) {
    for (const Stream& stream : streams_) Add(total, stream.statistics);
  } else if (const Stream* stream = Find(streamIndex)) {
    total = stream->statistics;
  } else {
    return MF_E_INVALIDSTREAMNUMBER;
  }
  total.cb = stats->cb;
  *stats = total;
  return S_OK;
}

}  // namespace tessel::platform
