// Uncompressed DIB frames: every frame a key frame, nothing held back.
#include "msvfw32/dib_compressor.h"

#include <cstring>
#include <new>

namespace tessel::platform {

namespace {

class DibCompressor final : public VideoCompressor {
 public:
  explicit DibCompressor(const CompressorSettings& settings) : settings_(settings) {}

  HRESULT Open();
  const std::vector<uint8_t>& Format() const override { return format_; }
  HRESULT Compress(const uint8_t* frame, int64_t position, bool forceKey, const FrameSink& sink) override;
  HRESULT Flush(const FrameSink&) override { return S_OK; }

 private:
  size_t FrameBytes() const { return size_t(settings_.stride) * settings_.height; }

  CompressorSettings settings_;
  std::vector<uint8_t> format_;
  std::vector<uint8_t> turned_;  // a top-down frame, turned over
};

HRESULT DibCompressor::Open() {
  BITMAPINFOHEADER header{};
  header.biSize = sizeof(header);
  header.biWidth = settings_.width;
  header.biHeight = settings_.height;
  header.biPlanes = 1;
  header.biBitCount = 24;
  header.biCompression = BI_RGB;
  header.biSizeImage = static_cast<DWORD>(FrameBytes());
  try {
    format_.assign(reinterpret_cast<const uint8_t*>(&header), reinterpret_cast<const uint8_t*>(&header + 1));
    if (!settings_.bottomUp) turned_.resize(FrameBytes());
  } catch (const std::bad_alloc&) {
    return AVIERR_MEMORY;
  }
  return S_OK;
}

HRESULT DibCompressor::Compress(const uint8_t* frame, int64_t position, bool, const FrameSink& sink) {
  const uint8_t* bottomUp = frame;
  if (!settings_.bottomUp) {
    for (int row = 0; row < settings_.height; ++row) {
      std::memcpy(turned_.data() + size_t(settings_.height - 1 - row) * settings_.stride,
                  frame + size_t(row) * settings_.stride, settings_.stride);
    }
    bottomUp = turned_.data();
  }
  return sink({bottomUp, FrameBytes(), position, true});
}

}  // namespace

HRESULT CreateDibCompressor(const CompressorSettings& settings, std::unique_ptr<VideoCompressor>* compressor) {
  auto made = std::unique_ptr<DibCompressor>(new (std::nothrow) DibCompressor(settings));
  if (!made) return AVIERR_MEMORY;
  HRESULT hr = made->Open();
  if (SUCCEEDED(hr)) *compressor = std::move(made);
  return hr;
}

}  // namespace tessel::platform
