// MFCreateMemoryBuffer: a plain block of memory.
#include <atomic>
#include <memory>
#include <mutex>
#include <new>

#include "com.h"
#include "mfapi.h"
#include "mferror.h"
#include "mfplat/buffers.h"
#include "platform_counters.h"

namespace tessel::platform {

namespace {

// Buffers of 2 MB and more take their memory from a pool of the last such size asked
// for. Frames written one after another ask for buffers of one size again and again;
// reusing the memory of released ones spares the system mapping and clearing it anew
// for every frame.
constexpr DWORD kPooledBytes = DWORD(2) << 20;

std::shared_ptr<BlockPool> PoolFor(DWORD maxLength) {
  static std::mutex mutex;
  static std::shared_ptr<BlockPool> pool;
  std::lock_guard lock(mutex);
  if (!pool || pool->BlockBytes() != maxLength) pool = std::make_shared<BlockPool>(maxLength);
  return pool;
}

class MemoryBuffer final : public RuntimeClass<RuntimeClassFlags<ClassicCom>, IMFMediaBuffer> {
 public:
  MemoryBuffer(BYTE* data, DWORD maxLength, std::shared_ptr<BlockPool> pool)
      : data_(data), maxLength_(maxLength), pool_(std::move(pool)) {}
  ~MemoryBuffer() {
    if (pool_) pool_->Give(data_);
    else FreeBufferMemory(data_);
  }

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
  std::shared_ptr<BlockPool> pool_;  // null for small buffers
  std::atomic<DWORD> currentLength_{0};
};

}  // namespace

HRESULT CreateMemoryBuffer(DWORD maxLength, IMFMediaBuffer** buffer) {
  if (!buffer) return E_POINTER;
  *buffer = nullptr;
  HRESULT injected = GetCounters().failNextBufferCreation.exchange(0);
  if (injected != 0) return injected;
  if (maxLength > kMaxBufferBytes) return E_OUTOFMEMORY;
  std::shared_ptr<BlockPool> pool = maxLength >= kPooledBytes ? PoolFor(maxLength) : nullptr;
  auto* data = static_cast<BYTE*>(pool ? pool->Take() : AllocateBufferMemory(maxLength));
  if (!data) return E_OUTOFMEMORY;
  *buffer = new (std::nothrow) MemoryBuffer(data, maxLength, pool);
  if (!*buffer) {
    if (pool) pool->Give(data);
    else FreeBufferMemory(data);
    return E_OUTOFMEMORY;
  }
  return S_OK;
}

}  // namespace tessel::platform

extern "C" HRESULT WINAPI MFCreateMemoryBuffer(DWORD maxLength, IMFMediaBuffer** buffer) {
  return tessel::platform::CreateMemoryBuffer(maxLength, buffer);
}
