// The "wmv3" compressor. Its frames keep their order (no B-frames), so each frame that
// goes in comes out at once and Flush has nothing left to give.
#include "msvfw32/wmv3_compressor.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <new>

#include "msvfw32/dib_converter.h"
#include "wmvencod/wmv3_encoder.h"

extern "C" {
#include <libavutil/rational.h>
}

namespace tessel::platform {

namespace {

constexpr DWORD kWmv3Tag = mmioFOURCC('W', 'M', 'V', '3');

Wmv3EncoderSettings EncoderSettings(const CompressorSettings& settings) {
  Wmv3EncoderSettings encoder;
  encoder.width = settings.width;
  encoder.height = settings.height;
  av_reduce(&encoder.rateNum, &encoder.rateDen, settings.rate, settings.scale, INT_MAX);
  encoder.keyFrameSpacing = static_cast<int>(std::min<DWORD>(settings.keyFrameEvery, INT_MAX));
  if (settings.bytesPerSecond > 0) {
    encoder.bitRate = int64_t(settings.bytesPerSecond) * 8;
  } else {
    encoder.fixedStep = 2 * QuantiserForQuality(settings.quality);
  }
  return encoder;
}

class Wmv3Compressor final : public VideoCompressor {
 public:
  HRESULT Open(const CompressorSettings& settings);
  const std::vector<uint8_t>& Format() const override { return format_; }
  HRESULT Compress(const uint8_t* frame, int64_t position, bool forceKey, const FrameSink& sink) override;
  HRESULT Flush(const FrameSink&) override { return S_OK; }

 private:
  HRESULT DescribeFormat(int width, int height);

  std::unique_ptr<Wmv3Encoder> encoder_;
  DibConverter converter_;
  FramePtr picture_;
  std::vector<uint8_t> compressed_;
  std::vector<uint8_t> format_;
};

HRESULT Wmv3Compressor::Open(const CompressorSettings& settings) {
  if (settings.width % 2 != 0 || settings.height % 2 != 0) return AVIERR_BADFORMAT;
  HRESULT hr = Wmv3Encoder::Create(EncoderSettings(settings), &encoder_);
  if (hr == E_INVALIDARG) return AVIERR_BADFORMAT;
  if (FAILED(hr)) return AVIERR_MEMORY;
  picture_.reset(av_frame_alloc());
  if (!picture_) return AVIERR_MEMORY;
  picture_->format = AV_PIX_FMT_YUV420P;
  picture_->width = settings.width;
  picture_->height = settings.height;
  if (av_frame_get_buffer(picture_.get(), 0) < 0) return AVIERR_MEMORY;
  hr = converter_.Open(settings.width, settings.height, settings.stride, settings.bottomUp, AV_PIX_FMT_YUV420P);
  return SUCCEEDED(hr) ? DescribeFormat(settings.width, settings.height) : hr;
}

HRESULT Wmv3Compressor::DescribeFormat(int width, int height) {
  const std::array<uint8_t, 4>& sequence = encoder_->SequenceHeader();
  BITMAPINFOHEADER header{};
  header.biSize = DWORD(sizeof(header) + sequence.size());
  header.biWidth = width;
  header.biHeight = height;
  header.biPlanes = 1;
  header.biBitCount = 24;
  header.biCompression = kWmv3Tag;
  header.biSizeImage = DWORD(int64_t(width) * height * 3);
  try {
    format_.resize(header.biSize);
  } catch (const std::bad_alloc&) {
    return AVIERR_MEMORY;
  }
  std::memcpy(format_.data(), &header, sizeof(header));
  std::memcpy(format_.data() + sizeof(header), sequence.data(), sequence.size());
  return S_OK;
}

HRESULT Wmv3Compressor::Compress(const uint8_t* frame, int64_t position, bool forceKey, const FrameSink& sink) {
  HRESULT hr = converter_.Convert(frame, picture_.get());
  if (FAILED(hr)) return hr;
  Wmv3Picture picture;
  for (int plane = 0; plane < 3; ++plane) {
    picture.planes[plane] = picture_->data[plane];
    picture.strides[plane] = picture_->linesize[plane];
  }
  if (forceKey) encoder_->ForceKeyFrame();
  bool key = false;
  hr = encoder_->Encode(picture, &compressed_, &key);
  if (FAILED(hr)) return AVIERR_MEMORY;
  return sink({compressed_.data(), compressed_.size(), position, key});
}

}  // namespace

HRESULT CreateWmv3Compressor(const CompressorSettings& settings, std::unique_ptr<VideoCompressor>* compressor) {
  auto made = std::unique_ptr<Wmv3Compressor>(new (std::nothrow) Wmv3Compressor);
  if (!made) return AVIERR_MEMORY;
  HRESULT hr = made->Open(settings);
  if (SUCCEEDED(hr)) *compressor = std::move(made);
  return hr;
}

}  // namespace tessel::platform
