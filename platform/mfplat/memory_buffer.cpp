// MFCreateMemoryBuffer: a plain block of memory.
#include <atomic>
#include <new>

#include "com.h"
#include "mfapi.h"
#include "mferror.h"
#include "mfplat/buffers.h"
#include "platform_counters.h"

namespace tessel::platform {

namespace {

class MemoryBuffer final : public RuntimeClass<RuntimeClassFlags<ClassicCom>, IMFMediaBuffer> {
 public:
  MemoryBuffer(BYTE* data, DWORD maxLength) : data_(data), maxLength_(maxLength) {}
  ~MemoryBuffer() { FreeBufferMemory(data_); }

  HRESULT STDMETHODCALLTYPE Lock(BYTE** buffer, DWORD* maxLength, DWORD* currentLength) override {
    if (!buffer) return E_POINTER;
    *buffer = data_;
    if (maxLength) *maxLength = maxLength_;
    if (currentLength) *currentLength = currentLength_.load();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Unlock() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE GetCurrentLength(DWORD* currentLength) override {
    if (!currentLength) return E_POINTER;
    *currentLength = currentLength_.load();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE SetCurrentLength(DWORD currentLength) override {
    if (currentLength > maxLength_) return E_INVALIDARG;
    currentLength_ = currentLength;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetMaxLength(DWORD* maxLength) override {
    if (!maxLength) return E_POINTER;
    *maxLength = maxLength_;
    return S_OK;
  }

 private:
  BYTE* data_;
  DWORD maxLength_;
  std::atomic<DWORD> currentLength_{0};
};

}  // namespace

HRESULT CreateMemoryBuffer(DWORD maxLength, IMFMediaBuffer** buffer) {
  if (!buffer) return E_POINTER;
  *buffer = nullptr;
  HRESULT injected = GetCounters().failNextBufferCreation.exchange(0);
  if (injected != 0) return injected;
  auto* data = static_cast<BYTE*>(AllocateBufferMemory(maxLength));
  if (!data) return E_OUTOFMEMORY;
  *buffer = new (std::nothrow) MemoryBuffer(data, maxLength);
  if (!*buffer) {
    FreeBufferMemory(data);
    return E_OUTOFMEMORY;
  }
  return S_OK;
}

}  // namespace tessel::platform

extern "C" HRESULT WINAPI MFCreateMemoryBuffer(DWORD maxLength, IMFMediaBuffer** buffer) {
  return tessel::platform::CreateMemoryBuffer(maxLength, buffer);
}
