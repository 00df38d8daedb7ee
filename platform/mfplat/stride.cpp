// MFGetStrideForBitmapInfoHeader and the image layouts built on it.
#include "mfapi.h"
#include "mferror.h"
#include "mfplat/buffers.h"
#include "mfplat/image_format.h"

namespace tessel::platform {

namespace {

// Wider rows or more pixels than this belong to no real image.
constexpr DWORD kMaxWidth = 1 << 16;
constexpr uint64_t kMaxPixels = uint64_t(8192) * 8192;

}  // namespace

HRESULT LayoutForImage(DWORD fourCC, DWORD width, DWORD height, ImageLayout* layout) {
  const ImageFormat* format = FindImageFormat(fourCC);
  if (!format || width == 0 || height == 0) return E_INVALIDARG;
  if (width > kMaxWidth || height > kMaxWidth || uint64_t(width) * height > kMaxPixels) return E_OUTOFMEMORY;
  uint64_t pitch = uint64_t(width) * format->bytesPerPixel;
  if (format->rgb) pitch = (pitch + 3) & ~uint64_t(3);
  uint64_t bytes = pitch * height;
  if (format->planar420) bytes += pitch * ((height + 1) / 2);
  if (bytes > kMaxBufferBytes) return E_OUTOFMEMORY;
  *layout = {width, height, static_cast<DWORD>(pitch), static_cast<DWORD>(bytes)};
  return S_OK;
}

}  // namespace tessel::platform

extern "C" HRESULT WINAPI MFGetStrideForBitmapInfoHeader(DWORD format, DWORD width, LONG* stride) {
  if (!stride) return E_POINTER;
  const tessel::platform::ImageFormat* image = tessel::platform::FindImageFormat(format);
  if (!image) return MF_E_INVALIDMEDIATYPE;
  if (width > tessel::platform::kMaxWidth) return E_INVALIDARG;
  LONG bytes = static_cast<LONG>(width) * image->bytesPerPixel;
  *stride = image->rgb ? -((bytes + 3) & ~3) : bytes;
  return S_OK;
}
