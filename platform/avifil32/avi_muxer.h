// AviMuxer: FFmpeg's AVI muxer writing one file. The file is created by Create; streams
// are added, the header goes out with Start, packets follow in the order they are to
// lie in the file, and Finish writes the index (the OpenDML index as well once the file
// has passed 1 GiB) and closes the file. Used by one thread at a time.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "avifil32/stream_format.h"
#include "mfreadwrite/ffmpeg_owners.h"

namespace tessel::platform {

class AviMuxer {
 public:
  // AVIERR_FILEOPEN when the file can't be created.
  static HRESULT Create(const std::string& path, std::unique_ptr<AviMuxer>* muxer);

  bool Started() const { return started_; }
  // A stream whose positions count units of `unit` seconds; its index in *stream.
  HRESULT AddStream(const StreamFormat& format, AVRational unit, int* stream);
  // Writes the header. Uncompressed RGB is declared bottom-up.
  HRESULT Start();
  // One chunk of a stream at its position. After any failure every call fails alike.
  HRESULT Write(int stream, const uint8_t* data, size_t size, int64_t position, bool key);
  // Writes the index and closes the file; the status of the first failure, if any.
  HRESULT Finish();

 private:
  // The failure an FFmpeg error (or a write error of the file) means, or S_OK.
  HRESULT Check(int error);
  // Keeps the first failure; gives it.
  HRESULT Fail(HRESULT status);

  OutputFormatContextPtr context_;
  PacketPtr packet_;
  std::vector<AVRational> units_;
  bool started_ = false;
  HRESULT failure_ = S_OK;
};

}  // namespace tessel::platform
