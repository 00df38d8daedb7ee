// SinkWriter: IMFSinkWriter over a Muxer and one SinkStream per added stream.
// Synchronous: every method runs on the calling thread under the writer's lock, and a
// sample is encoded and handed to the file before WriteSample returns; the encoders run
// threads of their own. Released without Finalize, the writer leaves the file as far as
// the muxer wrote it, without index or trailer.
#pragma once

#include <memory>
#include <mutex>
#include <vector>

#include "com.h"
#include "mfreadwrite.h"
#include "mfreadwrite/muxer.h"
#include "mfreadwrite/sink_stream.h"

namespace tessel::platform {

class SinkWriter final : public RuntimeClass<RuntimeClassFlags<ClassicCom>, IMFSinkWriter> {
 public:
  static HRESULT Create(const SinkContainer& container, std::unique_ptr<OutputFile> file, IMFSinkWriter** writer);
  ~SinkWriter();

  HRESULT STDMETHODCALLTYPE AddStream(IMFMediaType* targetMediaType, DWORD* streamIndex) override;
  HRESULT STDMETHODCALLTYPE SetInputMediaType(DWORD streamIndex, IMFMediaType* inputMediaType,
                                              IMFAttributes* encodingParameters) override;
  HRESULT STDMETHODCALLTYPE BeginWriting() override;
  HRESULT STDMETHODCALLTYPE WriteSample(DWORD streamIndex, IMFSample* sample) override;
  HRESULT STDMETHODCALLTYPE SendStreamTick(DWORD streamIndex, LONGLONG timestamp) override;
  HRESULT STDMETHODCALLTYPE PlaceMarker(DWORD streamIndex, LPVOID context) override;
  HRESULT STDMETHODCALLTYPE NotifyEndOfSegment(DWORD streamIndex) override;
  HRESULT STDMETHODCALLTYPE Flush(DWORD streamIndex) override;
  HRESULT STDMETHODCALLTYPE Finalize() override;
  HRESULT STDMETHODCALLTYPE GetServiceForStream(DWORD streamIndex, REFGUID service, REFIID riid,
                                                LPVOID* object) override;
  HRESULT STDMETHODCALLTYPE GetStatistics(DWORD streamIndex, MF_SINK_WRITER_STATISTICS* stats) override;

 private:
  enum class State { kSettingUp, kWriting, kFinalized, kBroken };
  struct Stream {
    std::unique_ptr<SinkStream> stream;
    int muxerIndex = -1;
    AVRational timeBase{};
    MF_SINK_WRITER_STATISTICS statistics{};
  };

  SinkWriter(const SinkContainer& container, std::unique_ptr<Muxer> muxer);
  // The stream an index names; null for an index beyond the streams.
  Stream* Find(DWORD streamIndex);
  // What a call that needs a writing writer and a valid stream index gives first.
  HRESULT CheckWriting(DWORD streamIndex);
  HRESULT Deliver(Stream& stream, std::vector<PacketPtr>& packets);

  std::mutex mutex_;
  const SinkContainer& container_;
  std::unique_ptr<Muxer> muxer_;  // null once finalised: the file is closed
  std::vector<Stream> streams_;
  State state_ = State::kSettingUp;
};

}  // namespace tessel::platform
