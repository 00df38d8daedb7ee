// ByteStreamIo: chunked reads with one asynchronous read ahead.
#include "mfreadwrite/byte_stream_io.h"

#include <cstring>
#include <new>

#include "com.h"
#include "mfapi.h"

namespace tessel::platform {

namespace {

constexpr size_t kChunkBytes = 256 * 1024;
constexpr int kAvioBufferBytes = 64 * 1024;

// Hands finished reads back to the ByteStreamIo, which outlives every read it starts.
class ReadCallback final : public RuntimeClass<RuntimeClassFlags<ClassicCom>, IMFAsyncCallback> {
 public:
  explicit ReadCallback(ByteStreamIo* owner) : owner_(owner) {}
  HRESULT STDMETHODCALLTYPE GetParameters(DWORD*, DWORD*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Invoke(IMFAsyncResult* result) override {
    owner_->CompleteRead(result);
    return S_OK;
  }

 private:
  ByteStreamIo* owner_;
};

}  // namespace

ByteStreamIo::ByteStreamIo(IMFByteStream* stream) : stream_(stream) {}

HRESULT ByteStreamIo::Create(IMFByteStream* stream, std::unique_ptr<ByteStreamIo>* io) {
  DWORD capabilities = 0;
  HRESULT hr = stream->GetCapabilities(&capabilities);
  if (FAILED(hr)) return hr;
  if (!(capabilities & MFBYTESTREAM_IS_READABLE)) return E_ACCESSDENIED;
  std::unique_ptr<ByteStreamIo> made(new (std::nothrow) ByteStreamIo(stream));
  if (!made) return E_OUTOFMEMORY;
  made->seekable_ = (capabilities & MFBYTESTREAM_IS_SEEKABLE) != 0;
  made->callback_ = Make<ReadCallback>(made.get());
  QWORD start = 0;
  if (FAILED(stream->GetCurrentPosition(&start))) start = 0;
  if (made->seekable_ && start != 0 && SUCCEEDED(stream->SetCurrentPosition(0))) start = 0;
  made->position_ = made->streamPosition_ = start;
  auto* buffer = static_cast<unsigned char*>(av_malloc(kAvioBufferBytes));
  if (!made->callback_ || !buffer) {
    av_free(buffer);
    return E_OUTOFMEMORY;
  }
  made->io_.reset(avio_alloc_context(buffer, kAvioBufferBytes, 0, made.get(), &ReadPacket, nullptr, &SeekPacket));
  if (!made->io_) {
    av_free(buffer);
    return E_OUTOFMEMORY;
  }
  made->io_->seekable = made->seekable_ ? AVIO_SEEKABLE_NORMAL : 0;
  *io = std::move(made);
  return S_OK;
}

ByteStreamIo::~ByteStreamIo() { WaitForReadAhead(); }

int ByteStreamIo::ReadPacket(void* opaque, uint8_t* buffer, int size) {
  return static_cast<ByteStreamIo*>(opaque)->Read(buffer, size);
}

int64_t ByteStreamIo::SeekPacket(void* opaque, int64_t offset, int whence) {
  return static_cast<ByteStreamIo*>(opaque)->Seek(offset, whence);
}

int ByteStreamIo::Read(uint8_t* buffer, int size) {
  if (size <= 0) return 0;
  if (!ready_.Covers(position_) && !Fill()) return failed_ ? AVERROR(EIO) : AVERROR_EOF;
  size_t offset = position_ - ready_.start;
  size_t count = std::min<size_t>(size, ready_.length - offset);
  std::memcpy(buffer, ready_.bytes.data() + offset, count);
  position_ += count;
  return static_cast<int>(count);
}

int64_t ByteStreamIo::Seek(int64_t offset, int whence) {
  whence &= ~AVSEEK_FORCE;
  if (whence == AVSEEK_SIZE) {
    QWORD length = 0;
    return SUCCEEDED(stream_->GetLength(&length)) && length != UINT64_MAX ? int64_t(length) : AVERROR(ENOSYS);
  }
  int64_t base = 0;
  if (whence == SEEK_CUR) {
    base = int64_t(position_);
  } else if (whence == SEEK_END) {
    QWORD length = 0;
    if (FAILED(stream_->GetLength(&length))) return AVERROR(ENOSYS);
    base = int64_t(length);
  }
  int64_t target = base + offset;
  if (target < 0) return AVERROR(EINVAL);
  bool buffered = ready_.Covers(uint64_t(target)) || uint64_t(target) == ready_.End();
  if (!seekable_ && !buffered) return AVERROR(ESPIPE);
  position_ = uint64_t(target);
  failed_ = false;
  return target;
}

bool ByteStreamIo::Fill() {
  WaitForReadAhead();
  if (position_ >= endOfStream_) return false;
  bool filled = ahead_.Covers(position_) ? TakeReadAhead() : ReadNow();
  if (filled && asyncReads_ && ready_.End() < endOfStream_) StartReadAhead();
  return filled;
}

bool ByteStreamIo::TakeReadAhead() {
  std::swap(ready_, ahead_);
  ahead_.length = 0;
  return true;
}

bool ByteStreamIo::ReadNow() {
  if (!MoveStreamTo(position_)) {
    failed_ = true;
    return false;
  }
  ready_.bytes.resize(kChunkBytes);
  ULONG count = 0;
  if (FAILED(stream_->Read(ready_.bytes.data(), kChunkBytes, &count)) || count > kChunkBytes) {
    failed_ = true;
    return false;
  }
  ready_.start = position_;
  ready_.length = count;
  streamPosition_ = position_ + count;
  if (count == 0) endOfStream_ = position_;
  return count > 0;
}

// Asks for the chunk behind ready_; the callback marks it done.
void ByteStreamIo::StartReadAhead() {
  uint64_t start = ready_.End();
  if (!MoveStreamTo(start)) return;
  ahead_.bytes.resize(kChunkBytes);
  ahead_.start = start;
  ahead_.length = 0;
  {
    std::lock_guard lock(mutex_);
    inFlight_ = true;
    aheadDone_ = false;
  }
  HRESULT hr = stream_->BeginRead(ahead_.bytes.data(), kChunkBytes, callback_.Get(), nullptr);
  if (FAILED(hr)) {
    std::lock_guard lock(mutex_);
    inFlight_ = false;
    asyncReads_ = false;
  }
}

void ByteStreamIo::CompleteRead(IMFAsyncResult* result) {
  ULONG count = 0;
  HRESULT hr = stream_->EndRead(result, &count);
  if (SUCCEEDED(hr)) hr = result->GetStatus();
  std::lock_guard lock(mutex_);
  aheadStatus_ = hr;
  ahead_.length = SUCCEEDED(hr) ? std::min<size_t>(count, kChunkBytes) : 0;
  aheadDone_ = true;
  finished_.notify_all();
}

// Waits for the read in flight, if any, and records where the stream now stands.
void ByteStreamIo::WaitForReadAhead() {
  std::unique_lock lock(mutex_);
  if (!inFlight_) return;
  finished_.wait(lock, [this] { return aheadDone_; });
  inFlight_ = false;
  if (FAILED(aheadStatus_)) {
    ahead_.length = 0;
    asyncReads_ = false;
    if (seekable_) streamPosition_ = UINT64_MAX;  // unknown: the next read sets it
    return;
  }
  streamPosition_ = ahead_.start + ahead_.length;
  if (ahead_.length == 0) endOfStream_ = std::min(endOfStream_, ahead_.start);
}

bool ByteStreamIo::MoveStreamTo(uint64_t position) {
  if (position == streamPosition_) return true;
  if (!seekable_ || FAILED(stream_->SetCurrentPosition(position))) return false;
  streamPosition_ = position;
  return true;
}

}  // namespace tessel::platform
