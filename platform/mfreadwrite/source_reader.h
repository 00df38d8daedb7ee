// SourceReader: IMFSourceReader over a Demuxer. Synchronous: every method runs on the
// calling thread under the reader's lock; the decoders run their own frame threads.
#pragma once

#include <memory>
#include <mutex>
#include <vector>

#include "com.h"
#include "mfreadwrite.h"
#include "mfreadwrite/demuxer.h"
#include "mfreadwrite/reader_stream.h"

namespace tessel::platform {

class SourceReader final : public RuntimeClass<RuntimeClassFlags<ClassicCom>, IMFSourceReader> {
 public:
  static HRESULT Create(std::unique_ptr<Demuxer> demuxer, VideoProcessing processing, IMFSourceReader** reader);
  ~SourceReader();

  HRESULT STDMETHODCALLTYPE GetStreamSelection(DWORD streamIndex, BOOL* selected) override;
  HRESULT STDMETHODCALLTYPE SetStreamSelection(DWORD streamIndex, BOOL selected) override;
  HRESULT STDMETHODCALLTYPE GetNativeMediaType(DWORD streamIndex, DWORD typeIndex, IMFMediaType** mediaType) override;
  HRESULT STDMETHODCALLTYPE GetCurrentMediaType(DWORD streamIndex, IMFMediaType** mediaType) override;
  HRESULT STDMETHODCALLTYPE SetCurrentMediaType(DWORD streamIndex, DWORD* reserved, IMFMediaType* mediaType) override;
  HRESULT STDMETHODCALLTYPE SetCurrentPosition(REFGUID timeFormat, REFPROPVARIANT position) override;
  HRESULT STDMETHODCALLTYPE ReadSample(DWORD streamIndex, DWORD controlFlags, DWORD* actualStreamIndex,
                                       DWORD* streamFlags, LONGLONG* timestamp, IMFSample** sample) override;
  HRESULT STDMETHODCALLTYPE Flush(DWORD streamIndex) override;
  HRESULT STDMETHODCALLTYPE GetServiceForStream(DWORD streamIndex, REFGUID service, REFIID riid,
                                                LPVOID* object) override;
  HRESULT STDMETHODCALLTYPE GetPresentationAttribute(DWORD streamIndex, REFGUID attribute,
                                                     PROPVARIANT* value) override;

 private:
  SourceReader(std::unique_ptr<Demuxer> demuxer, VideoProcessing processing);
  HRESULT DescribeStreams();
  // The stream an index names, the special first-video/first-audio indices included.
  ReaderStream* Find(DWORD streamIndex);
  int IndexOf(const ReaderStream* stream) const;
  // Demuxes one packet into its stream's queue; S_FALSE at the end of the file.
  HRESULT DemuxOne();
  HRESULT ReadFrom(ReaderStream& stream, Pulled* result, IMFSample** sample);
  HRESULT ReadAny(ReaderStream** from, Pulled* result, IMFSample** sample);
  HRESULT FeedNextQueued();
  HRESULT SeekTo(int64_t ticks);
  ReaderStream* SeekReference();
  HRESULT FirstTicksAfterSeek(ReaderStream& stream, int64_t* ticks);

  std::mutex mutex_;
  std::unique_ptr<Demuxer> demuxer_;
  VideoProcessing processing_;
  std::vector<std::unique_ptr<ReaderStream>> streams_;
  uint64_t packetOrder_ = 0;
  bool fileEnded_ = false;
};

}  // namespace tessel::platform
