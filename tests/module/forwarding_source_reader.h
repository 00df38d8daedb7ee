// A source reader that passes every call on to a real one and changes only what a test
// asks for: each video stream offers further native types after its own type 0, and
// the frame rate of native type 0 and of the current type can be given a zero
// denominator. These are what the platform's reader never offers.
#pragma once

#include <mfapi.h>
#include <mfreadwrite.h>
#include <wrl/implements.h>

#include <atomic>
#include <vector>

namespace tessel::testing {

// A further native type: of the stream's own major type, a copy of type 0 with this
// subtype; of another, a bare type with these two.
struct FurtherType {
  GUID major;
  GUID subtype;
};

class ForwardingSourceReader final : public Microsoft::WRL::RuntimeClass<
    Microsoft::WRL::RuntimeClassFlags<Microsoft::WRL::ClassicCom>, IMFSourceReader> {
 public:
  // A new reader with one reference, owned by the caller, that takes over the
  // caller's one reference on inner.
  static ForwardingSourceReader* Wrap(IMFSourceReader* inner) { return new ForwardingSourceReader(inner); }

  // Native types 1, 2, ... of every video stream; MF_E_NO_MORE_TYPES after the last.
  std::vector<FurtherType> furtherTypes;
  // Native type 0 and the current type of video streams state a frame rate of n / 0.
  bool zeroRateDenominator = false;

  HRESULT STDMETHODCALLTYPE GetStreamSelection(DWORD streamIndex, BOOL* selected) override {
    return _inner->GetStreamSelection(streamIndex, selected);
  }
  HRESULT STDMETHODCALLTYPE SetStreamSelection(DWORD streamIndex, BOOL selected) override {
    return _inner->SetStreamSelection(streamIndex, selected);
  }
  HRESULT STDMETHODCALLTYPE GetNativeMediaType(DWORD streamIndex, DWORD typeIndex, IMFMediaType** type) override;
  HRESULT STDMETHODCALLTYPE GetCurrentMediaType(DWORD streamIndex, IMFMediaType** type) override;
  HRESULT STDMETHODCALLTYPE SetCurrentMediaType(DWORD streamIndex, DWORD* reserved, IMFMediaType* type) override {
    return _inner->SetCurrentMediaType(streamIndex, reserved, type);
  }
  HRESULT STDMETHODCALLTYPE SetCurrentPosition(REFGUID timeFormat, REFPROPVARIANT position) override {
    return _inner->SetCurrentPosition(timeFormat, position);
  }
  HRESULT STDMETHODCALLTYPE ReadSample(DWORD streamIndex, DWORD controlFlags, DWORD* actualStreamIndex,
                                       DWORD* streamFlags, LONGLONG* timestamp, IMFSample** sample) override {
    return _inner->ReadSample(streamIndex, controlFlags, actualStreamIndex, streamFlags, timestamp, sample);
  }
  HRESULT STDMETHODCALLTYPE Flush(DWORD streamIndex) override { return _inner->Flush(streamIndex); }
  HRESULT STDMETHODCALLTYPE GetServiceForStream(DWORD streamIndex, REFGUID service, REFIID riid,
                                                LPVOID* object) override {
    return _inner->GetServiceForStream(streamIndex, service, riid, object);
  }
  HRESULT STDMETHODCALLTYPE GetPresentationAttribute(DWORD streamIndex, REFGUID attribute,
                                                     PROPVARIANT* value) override {
    return _inner->GetPresentationAttribute(streamIndex, attribute, value);
  }

 private:
  explicit ForwardingSourceReader(IMFSourceReader* inner) : _inner(inner) {}
  ~ForwardingSourceReader() { _inner->Release(); }
  // A changed copy of a type of a video stream: the frame rate's denominator zeroed
  // if asked for, and the subtype replaced unless it is GUID_NULL.
  HRESULT AlteredCopy(IMFMediaType* original, const GUID& subtype, IMFMediaType** copy) const;

  IMFSourceReader* _inner;
};

}  // namespace tessel::testing
