// Buffer creation inside the platform: plain memory buffers, image buffers with
// IMF2DBuffer, and the pool that lets a reader reuse the memory of released frames.
#pragma once

#include <cstddef>
#include <memory>
#include <mutex>
#include <vector>

#include "mfobjects.h"

namespace tessel::platform {

// Buffers above this size are refused with E_OUTOFMEMORY: no frame or sound block of
// a real file comes near it, and a header that asks for more is damaged.
inline constexpr size_t kMaxBufferBytes = size_t(1) << 30;

// Memory blocks of one size, kept for reuse after their buffer is released. Shared by
// the reader that fills the buffers and every buffer still alive; thread-safe.
class BlockPool {
 public:
  explicit BlockPool(size_t blockBytes) : blockBytes_(blockBytes) {}
  ~BlockPool();
  BlockPool(const BlockPool&) = delete;
  BlockPool& operator=(const BlockPool&) = delete;

  size_t BlockBytes() const { return blockBytes_; }
  // A block of BlockBytes(), or null when memory is short.
  void* Take();
  void Give(void* block);

 private:
  static constexpr size_t kKeep = 8;
  size_t blockBytes_;
  std::mutex mutex_;
  std::vector<void*> free_;
};

// Rows of an uncompressed image in memory: pitch bytes apart, top row first, and the
// planes of planar formats behind the first one.
struct ImageLayout {
  DWORD width = 0;
  DWORD height = 0;
  DWORD pitch = 0;
  DWORD bytes = 0;  // the whole image
};

// The layout of a format code (the first 32 bits of the subtype): E_INVALIDARG for an
// unknown format, E_OUTOFMEMORY for a size beyond kMaxBufferBytes.
HRESULT LayoutForImage(DWORD fourCC, DWORD width, DWORD height, ImageLayout* layout);

// An IMFMediaBuffer that also offers IMF2DBuffer. With a pool the memory comes from it
// and goes back to it; the pool's block size must be at least layout.bytes.
HRESULT CreateImageBuffer(const ImageLayout& layout, bool bottomUp, const std::shared_ptr<BlockPool>& pool,
                          IMFMediaBuffer** buffer);

HRESULT CreateMemoryBuffer(DWORD maxLength, IMFMediaBuffer** buffer);

// Aligned raw memory for buffers; null when memory is short or bytes is absurd.
void* AllocateBufferMemory(size_t bytes);
void FreeBufferMemory(void* memory);

}  // namespace tessel::platform
