// Demuxer: a container opened with libavformat, from a file path or through an
// IMFByteStream, giving its packets in file order. One thread at a time.
#pragma once

#include <memory>
#include <string>

#include "mfobjects.h"
#include "mfreadwrite/byte_stream_io.h"
#include "mfreadwrite/ffmpeg_owners.h"

namespace tessel::platform {

class Demuxer {
 public:
  Demuxer();
  static HRESULT OpenFile(const std::string& path, std::unique_ptr<Demuxer>* demuxer);
  static HRESULT OpenByteStream(IMFByteStream* stream, std::unique_ptr<Demuxer>* demuxer);

  AVFormatContext* Format() const { return format_.get(); }
  bool Seekable() const;
  // The length of the presentation in 100 ns ticks, or -1 if the file gives none.
  int64_t DurationTicks() const;

  // The next packet; S_FALSE at the end of the file. Damaged stretches are skipped, and
  // a run of failed reads without progress ends the file.
  HRESULT ReadPacket(PacketPtr* packet);
  // Moves to the key frame at or before ticks on the stream (-1: the default one).
  HRESULT SeekBefore(int streamIndex, int64_t ticks);

 private:
  HRESULT FinishOpen();
  bool AnyIndexRunsBackwards() const;
  // Back to the first packet by bytes, where the container allows it.
  bool RewindToData();

  std::unique_ptr<ByteStreamIo> io_;  // outlives format_, which reads through it
  FormatContextPtr format_;
  bool ended_ = false;
  int64_t dataStart_ = -1;  // where the header ended and the packets begin; -1: unknown
};

}  // namespace tessel::platform
