// ByteStreamIo: an AVIO context that reads through an IMFByteStream. It keeps one
// chunk ready and, while FFmpeg works on it, has the next chunk read with
// BeginRead/EndRead (the stream's own asynchronous read); a stream that refuses
// BeginRead is read with Read. The stream is only seeked when it declares
// MFBYTESTREAM_IS_SEEKABLE.
//
// Used by one thread at a time (the reader's); the read callback comes on whatever
// thread the stream calls it from. Destruction waits for a read in flight.
#pragma once

#include <condition_variable>
#include <memory>
#include <mutex>
#include <vector>

#include "com.h"
#include "mfobjects.h"
#include "mfreadwrite/ffmpeg_owners.h"

namespace tessel::platform {

class ByteStreamIo {
 public:
  static HRESULT Create(IMFByteStream* stream, std::unique_ptr<ByteStreamIo>* io);
  ~ByteStreamIo();
  ByteStreamIo(const ByteStreamIo&) = delete;
  ByteStreamIo& operator=(const ByteStreamIo&) = delete;

  AVIOContext* Context() const { return io_.get(); }
  bool Seekable() const { return seekable_; }

  // Called by the read callback with the finished asynchronous read.
  void CompleteRead(IMFAsyncResult* result);

 private:
  struct Chunk {
    std::vector<uint8_t> bytes;
    uint64_t start = 0;
    size_t length = 0;
    bool Covers(uint64_t position) const { return position >= start && position < start + length; }
    uint64_t End() const { return start + length; }
  };

  explicit ByteStreamIo(IMFByteStream* stream);
  static int ReadPacket(void* opaque, uint8_t* buffer, int size);
  static int64_t SeekPacket(void* opaque, int64_t offset, int whence);
  int Read(uint8_t* buffer, int size);
  int64_t Seek(int64_t offset, int whence);
  // Makes ready_ cover position_; false at the end of the stream or on a failed read.
  bool Fill();
  bool TakeReadAhead();
  bool ReadNow();
  void StartReadAhead();
  void WaitForReadAhead();
  bool MoveStreamTo(uint64_t position);

  ComPtr<IMFByteStream> stream_;
  ComPtr<IMFAsyncCallback> callback_;
  AvioContextPtr io_;
  bool seekable_ = false;
  bool asyncReads_ = true;
  uint64_t position_ = 0;        // where FFmpeg reads next
  uint64_t streamPosition_ = 0;  // where the byte stream reads next
  uint64_t endOfStream_ = UINT64_MAX;
  bool failed_ = false;
  Chunk ready_;
  Chunk ahead_;

  std::mutex mutex_;
  std::condition_variable finished_;
  bool inFlight_ = false;
  bool aheadDone_ = false;
  HRESULT aheadStatus_ = S_OK;
};

}  // namespace tessel::platform
