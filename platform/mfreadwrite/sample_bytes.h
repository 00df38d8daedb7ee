// SampleBytes: the bytes of a sample's buffers, joined into one and locked for as long
// as the object lives.
#pragma once

#include "com.h"
#include "mfobjects.h"

namespace tessel::platform {

class SampleBytes {
 public:
  SampleBytes() = default;
  ~SampleBytes() {
    if (data_) buffer_->Unlock();
  }
  SampleBytes(const SampleBytes&) = delete;
  SampleBytes& operator=(const SampleBytes&) = delete;

  // A sample without buffers gives no bytes.
  HRESULT Lock(IMFSample* sample) {
    DWORD count = 0;
    HRESULT hr = sample->GetBufferCount(&count);
    if (FAILED(hr) || count == 0) return hr;
    hr = sample->ConvertToContiguousBuffer(&buffer_);
    if (SUCCEEDED(hr)) hr = buffer_->Lock(&data_, nullptr, &length_);
    return hr;
  }
  const BYTE* Data() const { return data_; }
  size_t Length() const { return data_ ? length_ : 0; }

 private:
  ComPtr<IMFMediaBuffer> buffer_;
  BYTE* data_ = nullptr;
  DWORD length_ = 0;
};

}  // namespace tessel::platform
