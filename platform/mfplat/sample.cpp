// MFCreateSample: buffers with a time, a duration and attributes.
#include <cstring>
#include <mutex>
#include <new>
#include <vector>

#include "com.h"
#include "mfapi.h"
#include "mferror.h"
#include "mfplat/attributes_impl.h"
#include "mfplat/buffers.h"

namespace tessel::platform {

namespace {

class Sample final : public AttributesImpl<RuntimeClass<RuntimeClassFlags<ClassicCom>, ChainInterfaces<IMFSample, IMFAttributes>>> {
 public:
  HRESULT STDMETHODCALLTYPE GetSampleFlags(DWORD* flags) override {
    if (!flags) return E_POINTER;
    std::lock_guard lock(mutex_);
    *flags = flags_;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE SetSampleFlags(DWORD flags) override {
    std::lock_guard lock(mutex_);
    flags_ = flags;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetSampleTime(LONGLONG* time) override { return GetTime(time_, time); }
  HRESULT STDMETHODCALLTYPE SetSampleTime(LONGLONG time) override { return SetTime(time_, time); }
  HRESULT STDMETHODCALLTYPE GetSampleDuration(LONGLONG* duration) override { return GetTime(duration_, duration); }
  HRESULT STDMETHODCALLTYPE SetSampleDuration(LONGLONG duration) override { return SetTime(duration_, duration); }
  HRESULT STDMETHODCALLTYPE GetBufferCount(DWORD* count) override {
    if (!count) return E_POINTER;
    std::lock_guard lock(mutex_);
    *count = static_cast<DWORD>(buffers_.size());
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetBufferByIndex(DWORD index, IMFMediaBuffer** buffer) override {
    if (!buffer) return E_POINTER;
    std::lock_guard lock(mutex_);
    if (index >= buffers_.size()) return E_INVALIDARG;
    *buffer = ComPtr<IMFMediaBuffer>(buffers_[index]).Detach();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE ConvertToContiguousBuffer(IMFMediaBuffer** buffer) override {
    if (!buffer) return E_POINTER;
    std::lock_guard lock(mutex_);
    if (buffers_.empty()) return E_UNEXPECTED;
    if (buffers_.size() > 1) {
      ComPtr<IMFMediaBuffer> joined;
      HRESULT hr = Join(&joined);
      if (FAILED(hr)) return hr;
      buffers_.assign(1, joined);
    }
    *buffer = ComPtr<IMFMediaBuffer>(buffers_[0]).Detach();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE AddBuffer(IMFMediaBuffer* buffer) override {
    if (!buffer) return E_POINTER;
    std::lock_guard lock(mutex_);
    buffers_.emplace_back(buffer);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE RemoveBufferByIndex(DWORD index) override {
    std::lock_guard lock(mutex_);
    if (index >= buffers_.size()) return E_INVALIDARG;
    buffers_.erase(buffers_.begin() + index);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE RemoveAllBuffers() override {
    std::lock_guard lock(mutex_);
    buffers_.clear();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTotalLength(DWORD* totalLength) override {
    if (!totalLength) return E_POINTER;
    std::lock_guard lock(mutex_);
    *totalLength = TotalLength();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE CopyToBuffer(IMFMediaBuffer* buffer) override {
    if (!buffer) return E_POINTER;
    std::lock_guard lock(mutex_);
    return CopyInto(buffer);
  }

 private:
  HRESULT GetTime(const std::optional<LONGLONG>& field, LONGLONG* value) {
    if (!value) return E_POINTER;
    std::lock_guard lock(mutex_);
    if (!field) return MF_E_NO_SAMPLE_TIMESTAMP;
    *value = *field;
    return S_OK;
  }
  HRESULT SetTime(std::optional<LONGLONG>& field, LONGLONG value) {
    std::lock_guard lock(mutex_);
    field = value;
    return S_OK;
  }

  DWORD TotalLength() const {
    uint64_t total = 0;
    for (const auto& buffer : buffers_) {
      DWORD length = 0;
      buffer->GetCurrentLength(&length);
      total += length;
    }
    return total > UINT32_MAX ? UINT32_MAX : static_cast<DWORD>(total);
  }

  // Copies the buffers one after another into target; called with mutex_ held.
  HRESULT CopyInto(IMFMediaBuffer* target) const {
    BYTE* out = nullptr;
    DWORD capacity = 0;
    HRESULT hr = target->Lock(&out, &capacity, nullptr);
    if (FAILED(hr)) return hr;
    DWORD total = TotalLength();
    if (capacity < total) {
      target->Unlock();
      return MF_E_BUFFERTOOSMALL;
    }
    DWORD offset = 0;
    for (const auto& buffer : buffers_) {
      BYTE* in = nullptr;
      DWORD length = 0;
      if (FAILED(hr = buffer->Lock(&in, nullptr, &length))) break;
      std::memcpy(out + offset, in, length);
      offset += length;
      buffer->Unlock();
    }
    target->Unlock();
    return SUCCEEDED(hr) ? target->SetCurrentLength(offset) : hr;
  }

  HRESULT Join(IMFMediaBuffer** joined) const {
    ComPtr<IMFMediaBuffer> buffer;
    HRESULT hr = CreateMemoryBuffer(TotalLength(), &buffer);
    if (SUCCEEDED(hr)) hr = CopyInto(buffer.Get());
    if (SUCCEEDED(hr)) *joined = buffer.Detach();
    return hr;
  }

  mutable std::mutex mutex_;
  std::vector<ComPtr<IMFMediaBuffer>> buffers_;
  std::optional<LONGLONG> time_;
  std::optional<LONGLONG> duration_;
  DWORD flags_ = 0;
};

}  // namespace

}  // namespace tessel::platform

extern "C" HRESULT WINAPI MFCreateSample(IMFSample** sample) {
  if (!sample) return E_POINTER;
  *sample = new (std::nothrow) tessel::platform::Sample();
  return *sample ? S_OK : E_OUTOFMEMORY;
}
