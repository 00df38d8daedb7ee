// Image buffers: IMFMediaBuffer and IMF2DBuffer over one block of rows. Lock gives the
// contiguous image (top row first for a top-down buffer, bottom row first for a
// bottom-up one); Lock2D gives the top row and the signed pitch.
#include <atomic>
#include <cstring>
#include <new>

#include "com.h"
#include "mfapi.h"
#include "mferror.h"
#include "mfplat/buffers.h"
#include "platform_counters.h"

namespace tessel::platform {

namespace {

class ImageBuffer final : public RuntimeClass<RuntimeClassFlags<ClassicCom>, IMFMediaBuffer, IMF2DBuffer> {
 public:
  ImageBuffer(BYTE* data, const ImageLayout& layout, bool bottomUp, std::shared_ptr<BlockPool> pool)
      : data_(data), layout_(layout), bottomUp_(bottomUp), pool_(std::move(pool)), currentLength_(layout.bytes) {}
  ~ImageBuffer() {
    if (pool_) pool_->Give(data_);
    else FreeBufferMemory(data_);
  }

  HRESULT STDMETHODCALLTYPE Lock(BYTE** buffer, DWORD* maxLength, DWORD* currentLength) override {
    if (!buffer) return E_POINTER;
    *buffer = data_;
    if (maxLength) *maxLength = layout_.bytes;
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
    if (currentLength > layout_.bytes) return E_INVALIDARG;
    currentLength_ = currentLength;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetMaxLength(DWORD* maxLength) override {
    if (!maxLength) return E_POINTER;
    *maxLength = layout_.bytes;
    return S_OK;
  }

  HRESULT STDMETHODCALLTYPE Lock2D(BYTE** scanline0, LONG* pitch) override {
    return GetScanline0AndPitch(scanline0, pitch);
  }
  HRESULT STDMETHODCALLTYPE Unlock2D() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE GetScanline0AndPitch(BYTE** scanline0, LONG* pitch) override {
    if (!scanline0 || !pitch) return E_POINTER;
    LONG rowPitch = static_cast<LONG>(layout_.pitch);
    *scanline0 = bottomUp_ ? data_ + size_t(layout_.height - 1) * layout_.pitch : data_;
    *pitch = bottomUp_ ? -rowPitch : rowPitch;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE IsContiguousFormat(BOOL* contiguous) override {
    if (!contiguous) return E_POINTER;
    *contiguous = TRUE;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetContiguousLength(DWORD* length) override {
    if (!length) return E_POINTER;
    *length = layout_.bytes;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE ContiguousCopyTo(BYTE* destination, DWORD destinationLength) override {
    if (!destination) return E_POINTER;
    if (destinationLength < layout_.bytes) return MF_E_BUFFERTOOSMALL;
    std::memcpy(destination, data_, layout_.bytes);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE ContiguousCopyFrom(const BYTE* source, DWORD sourceLength) override {
    if (!source) return E_POINTER;
    if (sourceLength < layout_.bytes) return E_INVALIDARG;
    std::memcpy(data_, source, layout_.bytes);
    currentLength_ = layout_.bytes;
    return S_OK;
  }

 private:
  BYTE* data_;
  ImageLayout layout_;
  bool bottomUp_;
  std::shared_ptr<BlockPool> pool_;
  std::atomic<DWORD> currentLength_;
};

}  // namespace

HRESULT CreateImageBuffer(const ImageLayout& layout, bool bottomUp, const std::shared_ptr<BlockPool>& pool,
                          IMFMediaBuffer** buffer) {
  if (!buffer) return E_POINTER;
  *buffer = nullptr;
  HRESULT injected = GetCounters().failNextBufferCreation.exchange(0);
  if (injected != 0) return injected;
  if (pool && pool->BlockBytes() < layout.bytes) return E_INVALIDARG;
  auto* data = static_cast<BYTE*>(pool ? pool->Take() : AllocateBufferMemory(layout.bytes));
  if (!data) return E_OUTOFMEMORY;
  auto* image = new (std::nothrow) ImageBuffer(data, layout, bottomUp, pool);
  if (!image) {
    if (pool) pool->Give(data);
    else FreeBufferMemory(data);
    return E_OUTOFMEMORY;
  }
  *buffer = static_cast<IMFMediaBuffer*>(image);
  return S_OK;
}

}  // namespace tessel::platform

extern "C" HRESULT WINAPI MFCreate2DMediaBuffer(DWORD width, DWORD height, DWORD fourCC, BOOL bottomUp,
                                                IMFMediaBuffer** buffer) {
  tessel::platform::ImageLayout layout;
  HRESULT hr = tessel::platform::LayoutForImage(fourCC, width, height, &layout);
  if (FAILED(hr)) return hr;
  return tessel::platform::CreateImageBuffer(layout, bottomUp != FALSE, nullptr, buffer);
}
