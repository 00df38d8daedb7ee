// Compressing frames into a stream of a file.
#include "avifil32/compressed_stream.h"

#include <cstring>
#include <new>

#include "mfapi.h"
#include "mfplat/buffers.h"

extern "C" {
#include <libavutil/rational.h>
}

namespace tessel::platform {

namespace {

constexpr DWORD kDefaultQuality = 7500;
constexpr DWORD kKnownFlags = AVICOMPRESSF_INTERLEAVE | AVICOMPRESSF_DATARATE | AVICOMPRESSF_KEYFRAMES |
                              AVICOMPRESSF_VALID;

// The frame rate as the compressor takes it: reduced, so that a rate written with six
// decimals (25000000 / 1000000) reaches the encoder as 25 / 1.
void SetRate(const AVISTREAMINFOW& info, CompressorSettings* settings) {
  int rate = 0;
  int scale = 0;
  av_reduce(&rate, &scale, info.dwRate, info.dwScale, INT32_MAX);
  settings->rate = static_cast<DWORD>(rate);
  settings->scale = static_cast<DWORD>(scale);
}

}  // namespace

HRESULT CompressedStream::Create(IAVIStream* source, const AVICOMPRESSOPTIONS& options, IAVIStream** stream) {
  AVISTREAMINFOW info{};
  HRESULT hr = source->Info(&info, sizeof(info));
  if (FAILED(hr)) return hr;
  if (info.fccType != streamtypeVIDEO) return AVIERR_UNSUPPORTED;
  if (options.fccType != 0 && options.fccType != ICTYPE_VIDEO) return AVIERR_UNSUPPORTED;
  if (options.dwFlags & ~kKnownFlags) return AVIERR_BADFLAGS;
  if (options.dwQuality > ICQUALITY_HIGH && options.dwQuality != ICQUALITY_DEFAULT) return AVIERR_BADPARAM;
  const CompressorEntry* entry = FindCompressor(options.fccHandler);
  if (!entry) return AVIERR_NOCOMPRESSOR;
  CompressorSettings settings;
  SetRate(info, &settings);
  settings.quality = options.dwQuality == ICQUALITY_DEFAULT ? kDefaultQuality : options.dwQuality;
  if (options.dwFlags & AVICOMPRESSF_KEYFRAMES) settings.keyFrameEvery = options.dwKeyFrameEvery;
  if (options.dwFlags & AVICOMPRESSF_DATARATE) settings.bytesPerSecond = options.dwBytesPerSecond;
  auto* made = new (std::nothrow) CompressedStream(ComPtr<IAVIStream>(source), info, *entry, settings);
  if (!made) return AVIERR_MEMORY;
  *stream = made;
  return S_OK;
}

CompressedStream::CompressedStream(ComPtr<IAVIStream> source, const AVISTREAMINFOW& sourceInfo,
                                   const CompressorEntry& compressor, const CompressorSettings& settings)
    : source_(std::move(source)), sourceInfo_(sourceInfo), entry_(compressor), settings_(settings) {}

// Nobody is left to hear of a failure here; the source keeps what was written before it.
CompressedStream::~CompressedStream() {
  if (compressor_) compressor_->Flush([this](const CompressedFrame& frame) { return Pass(frame); });
}

HRESULT CompressedStream::Info(AVISTREAMINFOW* psi, LONG lSize) {
  AVISTREAMINFOW info = sourceInfo_;
  info.fccHandler = entry_.info.fccHandler;
  info.dwLength = static_cast<DWORD>(next_);
  return CopyInfo(info, psi, lSize);
}

HRESULT CompressedStream::ReadFormat(LONG, LPVOID lpFormat, LONG* lpcbFormat) {
  return CopyFormat(inputFormat_, lpFormat, lpcbFormat);
}

HRESULT CompressedStream::SetFormat(LONG lPos, LPVOID lpFormat, LONG cbFormat) {
  if (lPos != 0 || compressor_) return AVIERR_UNSUPPORTED;
  BITMAPINFOHEADER header;
  if (!lpFormat || cbFormat < LONG(sizeof(header))) return AVIERR_BADFORMAT;
  std::memcpy(&header, lpFormat, sizeof(header));
  if (header.biSize < sizeof(header) || header.biCompression != BI_RGB || header.biBitCount != 24 ||
      header.biPlanes != 1 || header.biWidth <= 0 || header.biHeight == 0 || header.biHeight == INT32_MIN) {
    return AVIERR_BADFORMAT;
  }
  ImageLayout layout;
  LONG height = header.biHeight > 0 ? header.biHeight : -header.biHeight;
  if (FAILED(LayoutForImage(MFVideoFormat_RGB24.Data1, DWORD(header.biWidth), DWORD(height), &layout))) {
    return AVIERR_BADFORMAT;
  }
  CompressorSettings settings = settings_;
  settings.width = header.biWidth;
  settings.height = height;
  settings.stride = static_cast<int>(layout.pitch);
  settings.bottomUp = header.biHeight > 0;
  std::unique_ptr<VideoCompressor> compressor;
  HRESULT hr = entry_.create(settings, &compressor);
  if (FAILED(hr)) return hr;
  const std::vector<uint8_t>& format = compressor->Format();
  hr = source_->SetFormat(0, const_cast<uint8_t*>(format.data()), static_cast<LONG>(format.size()));
  if (FAILED(hr)) return hr;
  try {
    const auto* bytes = static_cast<const uint8_t*>(lpFormat);
    inputFormat_.assign(bytes, bytes + sizeof(header));
  } catch (const std::bad_alloc&) {
    return AVIERR_MEMORY;
  }
  settings_ = settings;
  frameBytes_ = layout.bytes;
  compressor_ = std::move(compressor);
  return S_OK;
}

HRESULT CompressedStream::Write(LONG lStart, LONG lSamples, LPVOID lpBuffer, LONG cbBuffer, DWORD dwFlags,
                                LONG* plSampWritten, LONG* plBytesWritten) {
  if (!compressor_) return AVIERR_BADFORMAT;
  if (dwFlags & ~AVIIF_KEYFRAME) return AVIERR_BADFLAGS;
  if (lSamples != 1 || lStart < next_ || lStart == INT32_MAX || !lpBuffer) return AVIERR_BADPARAM;
  if (cbBuffer < 0 || size_t(cbBuffer) < frameBytes_) return AVIERR_BADSIZE;
  bytesPassed_ = 0;
  HRESULT hr = compressor_->Compress(static_cast<const uint8_t*>(lpBuffer), lStart, (dwFlags & AVIIF_KEYFRAME) != 0,
                                     [this](const CompressedFrame& frame) { return Pass(frame); });
  if (FAILED(hr)) return hr;
  next_ = lStart + 1;
  if (plSampWritten) *plSampWritten = 1;
  if (plBytesWritten) *plBytesWritten = bytesPassed_;
  return S_OK;
}

HRESULT CompressedStream::Pass(const CompressedFrame& frame) {
  HRESULT hr = source_->Write(static_cast<LONG>(frame.position), 1, const_cast<uint8_t*>(frame.data),
                              static_cast<LONG>(frame.size), frame.key ? AVIIF_KEYFRAME : 0, nullptr, nullptr);
  if (SUCCEEDED(hr)) bytesPassed_ += static_cast<LONG>(frame.size);
  return hr;
}

}  // namespace tessel::platform
