// A compressor on one of FFmpeg's encoders.
#include "msvfw32/ffmpeg_compressor.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <new>

#include "mfreadwrite/codec_log.h"
#include "mfreadwrite/ffmpeg_owners.h"
#include "msvfw32/dib_converter.h"

extern "C" {
#include <libavutil/dict.h>
#include <libavutil/opt.h>
}

namespace tessel::platform {

namespace {

double RateFactorFor(DWORD quality) { return 12 + (10000 - quality) * 28 / 10000.0; }

HRESULT StatusOfOpening(int error) {
  if (error == AVERROR(ENOMEM)) return AVIERR_MEMORY;
  if (error == AVERROR(EINVAL) || error == AVERROR(ERANGE)) return AVIERR_BADFORMAT;
  return AVIERR_COMPRESSOR;
}

HRESULT StatusOfCoding(int error) { return error == AVERROR(ENOMEM) ? AVIERR_MEMORY : AVIERR_COMPRESSOR; }

class FfmpegCompressor final : public VideoCompressor {
 public:
  explicit FfmpegCompressor(const FfmpegCodec& codec) : codec_(codec) {}

  HRESULT Open(const CompressorSettings& settings);
  const std::vector<uint8_t>& Format() const override { return format_; }
  HRESULT Compress(const uint8_t* frame, int64_t position, bool forceKey, const FrameSink& sink) override;
  HRESULT Flush(const FrameSink& sink) override;

 private:
  void Configure(const CompressorSettings& settings);
  HRESULT OpenEncoder(const AVCodec* encoder);
  // A picture to convert into: one of the pictures made before that the encoder no
  // longer holds, or a new one. Reusing them spares the memory system a new picture
  // for each frame while an encoder's threads hold several.
  AVFrame* FreePicture();
  HRESULT DescribeFormat();
  // Hands every packet the encoder has ready to sink.
  HRESULT Drain(const FrameSink& sink);

  const FfmpegCodec& codec_;
  CodecContextPtr context_;
  std::vector<FramePtr> pictures_;
  PacketPtr packet_;
  DibConverter converter_;
  int lambda_ = 0;  // each frame's quality; 0 lets the rate control choose
  std::vector<uint8_t> format_;
};

HRESULT FfmpegCompressor::Open(const CompressorSettings& settings) {
  if (settings.width % codec_.sizeStep != 0 || settings.height % codec_.sizeStep != 0) return AVIERR_BADFORMAT;
  TakeOverCodecLog();
  const AVCodec* encoder = avcodec_find_encoder_by_name(codec_.encoder);
  if (!encoder) return AVIERR_NOCOMPRESSOR;
  context_.reset(avcodec_alloc_context3(encoder));
  packet_.reset(av_packet_alloc());
  if (!context_ || !packet_) return AVIERR_MEMORY;
  Configure(settings);
  HRESULT hr = OpenEncoder(encoder);
  if (SUCCEEDED(hr)) hr = converter_.Open(settings.width, settings.height, settings.stride, settings.bottomUp,
                                          codec_.input);
  if (SUCCEEDED(hr)) hr = DescribeFormat();
  return hr;
}

void FfmpegCompressor::Configure(const CompressorSettings& settings) {
  AVCodecContext* c = context_.get();
  c->width = settings.width;
  c->height = settings.height;
  c->pix_fmt = codec_.input;
  // Positions count frames: one frame is one tick of the time base. Encoders that keep
  // the rate in 16 bits get the nearest rate that fits.
  av_reduce(&c->time_base.num, &c->time_base.den, settings.scale, settings.rate, 65535);
  c->framerate = av_inv_q(c->time_base);
  c->thread_count = 0;
  c->thread_type = FF_THREAD_FRAME | FF_THREAD_SLICE;
  c->max_b_frames = 0;  // frames leave the encoder in the order they came, as AVI keeps them
  c->colorspace = AVCOL_SPC_SMPTE170M;
  c->color_range = codec_.input == AV_PIX_FMT_YUVJ420P ? AVCOL_RANGE_JPEG : AVCOL_RANGE_MPEG;
  bool rateControlled = codec_.dataRate && settings.bytesPerSecond > 0;
  if (rateControlled) {
    c->bit_rate = int64_t(settings.bytesPerSecond) * 8;
    // A quarter second's worth of deviation, where FFmpeg allows four seconds': clips of
    // a few seconds end near the rate asked.
    c->bit_rate_tolerance = static_cast<int>(std::min<int64_t>(c->bit_rate / 4, INT32_MAX));
  } else if (codec_.quality == QualityControl::kLambda) {
    lambda_ = QuantiserForQuality(settings.quality) * FF_QP2LAMBDA;
    c->flags |= AV_CODEC_FLAG_QSCALE;
    c->global_quality = lambda_;
  }
  const int keyFrameEvery = static_cast<int>(std::min<DWORD>(settings.keyFrameEvery, INT32_MAX));
  switch (codec_.keyFrames) {
    case KeyFrameControl::kIntraOnly: c->gop_size = 1; break;
    case KeyFrameControl::kGopSize:
      if (keyFrameEvery > 0) c->gop_size = keyFrameEvery;
      break;
    case KeyFrameControl::kIntervalAfterMinimum:
      if (keyFrameEvery > 0) c->keyint_min = keyFrameEvery - 1;
      break;
  }
  if (codec_.quality == QualityControl::kCrf && !rateControlled) {
    av_opt_set_double(c->priv_data, "crf", RateFactorFor(settings.quality), 0);
  }
}

HRESULT FfmpegCompressor::OpenEncoder(const AVCodec* encoder) {
  AVDictionary* options = nullptr;
  int error = av_dict_parse_string(&options, codec_.options, "=", ":", 0);
  if (error >= 0) error = avcodec_open2(context_.get(), encoder, &options);
  av_dict_free(&options);
  return error < 0 ? StatusOfOpening(error) : S_OK;
}

AVFrame* FfmpegCompressor::FreePicture() {
  for (const FramePtr& picture : pictures_) {
    if (av_frame_is_writable(picture.get())) return picture.get();
  }
  FramePtr picture(av_frame_alloc());
  if (!picture) return nullptr;
  picture->format = codec_.input;
  picture->width = context_->width;
  picture->height = context_->height;
  if (av_frame_get_buffer(picture.get(), 0) < 0) return nullptr;
  try {
    pictures_.push_back(std::move(picture));
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
  return pictures_.back().get();
}

HRESULT FfmpegCompressor::DescribeFormat() {
  const AVCodecContext* c = context_.get();
  BITMAPINFOHEADER header{};
  header.biSize = sizeof(header) + c->extradata_size;
  header.biWidth = c->width;
  header.biHeight = c->height;
  header.biPlanes = 1;
  header.biBitCount = c->bits_per_coded_sample > 0 ? c->bits_per_coded_sample : codec_.bitCount;
  header.biCompression = codec_.tag;
  header.biSizeImage = static_cast<DWORD>(int64_t(c->width) * c->height * header.biBitCount / 8);
  try {
    format_.resize(header.biSize);
  } catch (const std::bad_alloc&) {
    return AVIERR_MEMORY;
  }
  std::memcpy(format_.data(), &header, sizeof(header));
  if (c->extradata_size > 0) std::memcpy(format_.data() + sizeof(header), c->extradata, c->extradata_size);
  return S_OK;
}

HRESULT FfmpegCompressor::Compress(const uint8_t* frame, int64_t position, bool forceKey, const FrameSink& sink) {
  AVFrame* picture = FreePicture();
  if (!picture) return AVIERR_MEMORY;
  HRESULT hr = converter_.Convert(frame, picture);
  if (FAILED(hr)) return hr;
  picture->pts = position;
  picture->quality = lambda_;
  picture->pict_type = forceKey ? AV_PICTURE_TYPE_I : AV_PICTURE_TYPE_NONE;
  int error = avcodec_send_frame(context_.get(), picture);
  if (error < 0) return StatusOfCoding(error);
  return Drain(sink);
}

HRESULT FfmpegCompressor::Flush(const FrameSink& sink) {
  int error = avcodec_send_frame(context_.get(), nullptr);
  if (error < 0) return StatusOfCoding(error);
  return Drain(sink);
}

HRESULT FfmpegCompressor::Drain(const FrameSink& sink) {
  for (;;) {
    int error = avcodec_receive_packet(context_.get(), packet_.get());
    if (error == AVERROR(EAGAIN) || error == AVERROR_EOF) return S_OK;
    if (error < 0) return StatusOfCoding(error);
    CompressedFrame compressed{packet_->data, static_cast<size_t>(packet_->size), packet_->pts,
                               (packet_->flags & AV_PKT_FLAG_KEY) != 0};
    HRESULT hr = sink(compressed);
    av_packet_unref(packet_.get());
    if (FAILED(hr)) return hr;
  }
}

}  // namespace

HRESULT CreateFfmpegCompressor(const FfmpegCodec& codec, const CompressorSettings& settings,
                               std::unique_ptr<VideoCompressor>* compressor) {
  auto made = std::unique_ptr<FfmpegCompressor>(new (std::nothrow) FfmpegCompressor(codec));
  if (!made) return AVIERR_MEMORY;
  HRESULT hr = made->Open(settings);
  if (SUCCEEDED(hr)) *compressor = std::move(made);
  return hr;
}

}  // namespace tessel::platform
