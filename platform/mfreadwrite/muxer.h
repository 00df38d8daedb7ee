// Muxer: a container written with libavformat into an OutputFile. Streams are added
// before Begin; packets then come in any order of streams, each stream in decode order,
// and are interleaved by their times before they reach the file. A failed write of the
// file fails every later call with the same status. One thread at a time.
#pragma once

#include <memory>
#include <vector>

#include "mfreadwrite/ffmpeg_owners.h"
#include "mfreadwrite/output_file.h"
#include "mfreadwrite/sink_container.h"

namespace tessel::platform {

class Muxer {
 public:
  static HRESULT Create(const SinkContainer& container, std::unique_ptr<OutputFile> file,
                        std::unique_ptr<Muxer>* muxer);

  // Whether codec headers belong in the container rather than in the stream.
  bool WantsGlobalHeaders() const;
  // A stream of these parameters whose packets come timed in timeBase.
  HRESULT AddStream(const AVCodecParameters& parameters, AVRational timeBase, AVRational frameRate, int* index);
  // Writes the container's header.
  HRESULT Begin();
  // Takes the packet of stream index, timed in the stream's timeBase.
  HRESULT Write(int index, PacketPtr packet);
  // Hands the bytes held in memory to the file, so that a failed write shows now.
  HRESULT Flush();
  // Writes what is still held, the container's index and trailer.
  HRESULT Finish();

 private:
  Muxer(const SinkContainer& container, std::unique_ptr<OutputFile> file)
      : container_(container), file_(std::move(file)) {}
  HRESULT Check(int error);

  const SinkContainer& container_;
  std::unique_ptr<OutputFile> file_;  // outlives format_, which writes through it
  OutputContextPtr format_;
  std::vector<AVRational> timeBases_;  // of the packets given, per stream
  HRESULT failed_ = S_OK;
};

}  // namespace tessel::platform
