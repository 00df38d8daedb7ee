// A source reader that plays a script, for tests of the frame fetch and the sound: each
// stream is a list of reads with chosen timestamps and durations, a seek lands on a key
// frame by a chosen rule, and every SetCurrentPosition and stream selection is recorded.
// Video samples carry a 2x2 RGB24 picture whose blue is the read's index; audio samples
// carry one memory buffer of two bytes {index, buffer} per buffer.
#pragma once

#include <mfapi.h>
#include <mfreadwrite.h>
#include <wrl/implements.h>

#include <atomic>
#include <vector>

namespace tessel::testing {

struct ScriptedRead {
  LONGLONG time = 0;
  LONGLONG duration = -1;  // -1: the sample has no duration
  bool sample = true;      // false: a stream tick
  int buffers = 1;
};

// count reads from first, step apart, of that duration (-1: none).
std::vector<ScriptedRead> EvenReads(int count, LONGLONG first, LONGLONG step, LONGLONG duration);

class ScriptedSourceReader final : public Microsoft::WRL::RuntimeClass<
    Microsoft::WRL::RuntimeClassFlags<Microsoft::WRL::ClassicCom>, IMFSourceReader> {
 public:
  enum class Landing { KEY_FRAME_BEFORE, KEY_FRAME_AFTER };

  // Adds a stream; the end flag comes with the timestamp endTime. Every keyInterval-th
  // read is a key frame.
  void AddStream(std::vector<ScriptedRead> reads, LONGLONG endTime, bool video, int keyInterval = 12);

  Landing landing = Landing::KEY_FRAME_BEFORE;
  std::vector<LONGLONG> positions;
  std::vector<DWORD> selections;
  int readCount = 0;
  // The next ReadSample fails with this status when it is not S_OK.
  HRESULT failNextRead = S_OK;

  HRESULT STDMETHODCALLTYPE GetStreamSelection(DWORD, BOOL*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE SetStreamSelection(DWORD streamIndex, BOOL) override;
  HRESULT STDMETHODCALLTYPE GetNativeMediaType(DWORD, DWORD, IMFMediaType**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetCurrentMediaType(DWORD, IMFMediaType**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE SetCurrentMediaType(DWORD, DWORD*, IMFMediaType*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE SetCurrentPosition(REFGUID timeFormat, REFPROPVARIANT position) override;
  HRESULT STDMETHODCALLTYPE ReadSample(DWORD streamIndex, DWORD controlFlags, DWORD* actualStreamIndex,
                                       DWORD* streamFlags, LONGLONG* timestamp, IMFSample** sample) override;
  HRESULT STDMETHODCALLTYPE Flush(DWORD) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE GetServiceForStream(DWORD, REFGUID, REFIID, LPVOID*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetPresentationAttribute(DWORD, REFGUID, PROPVARIANT*) override { return E_NOTIMPL; }

  // A new reader with one reference, owned by the caller.
  static ScriptedSourceReader* Create() { return new ScriptedSourceReader; }

 private:
  struct Stream {
    std::vector<ScriptedRead> reads;
    LONGLONG endTime = 0;
    bool video = false;
    int keyInterval = 12;
    size_t next = 0;
  };
  ScriptedSourceReader() = default;
  size_t Land(const Stream& stream, LONGLONG position) const;
  HRESULT MakeSample(const Stream& stream, size_t index, IMFSample** sample) const;

  std::vector<Stream> _streams;
};

}  // namespace tessel::testing
