// Stream formats: bitmap and wave headers checked and mapped onto FFmpeg's codecs.
#include "avifil32/stream_format.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "mfapi.h"
#include "mfplat/buffers.h"

extern "C" {
#include <libavformat/avformat.h>
#include <libavutil/mem.h>
}

namespace tessel::platform {

namespace {

// The sizes a video stream may have: those of an image buffer of the platform.
bool ValidFrameSize(LONG width, LONG height) {
  ImageLayout layout;
  return width > 0 && height > 0 &&
         SUCCEEDED(LayoutForImage(MFVideoFormat_RGB24.Data1, static_cast<DWORD>(width), static_cast<DWORD>(height),
                                  &layout));
}

AVCodecID CodecOfBitmap(DWORD compression) {
  const AVCodecTag* const tags[] = {avformat_get_riff_video_tags(), nullptr};
  return av_codec_get_id(tags, compression);
}

HRESULT ReadVideoFormat(const uint8_t* data, LONG size, StreamFormat* format) {
  BITMAPINFOHEADER header;
  if (size < LONG(sizeof(header))) return AVIERR_BADFORMAT;
  std::memcpy(&header, data, sizeof(header));
  if (header.biSize < sizeof(header) || header.biSize > DWORD(size)) return AVIERR_BADFORMAT;
  if (!ValidFrameSize(header.biWidth, header.biHeight)) return AVIERR_BADFORMAT;
  format->type = AVMEDIA_TYPE_VIDEO;
  format->tag = header.biCompression;
  format->width = header.biWidth;
  format->height = header.biHeight;
  format->bitCount = header.biBitCount;
  if (header.biCompression == BI_RGB) {
    if (header.biBitCount != 24) return AVIERR_BADFORMAT;
    format->codec = AV_CODEC_ID_RAWVIDEO;
    format->pixelFormat = AV_PIX_FMT_BGR24;
  } else {
    format->codec = CodecOfBitmap(header.biCompression);
    if (format->codec == AV_CODEC_ID_NONE) return AVIERR_BADFORMAT;
  }
  try {
    format->extradata.assign(data + sizeof(header), data + header.biSize);
  } catch (const std::bad_alloc&) {
    return AVIERR_MEMORY;
  }
  return S_OK;
}

AVCodecID PcmCodec(int bitsPerSample) {
  switch (bitsPerSample) {
    case 8: return AV_CODEC_ID_PCM_U8;
    case 16: return AV_CODEC_ID_PCM_S16LE;
    case 24: return AV_CODEC_ID_PCM_S24LE;
    case 32: return AV_CODEC_ID_PCM_S32LE;
    default: return AV_CODEC_ID_NONE;
  }
}

constexpr int kMaxChannels = 8;
constexpr DWORD kMaxSampleRate = 768000;
// A wave format without cbSize (PCMWAVEFORMAT) is enough for PCM.
constexpr LONG kPcmFormatSize = 16;

HRESULT ReadAudioFormat(const uint8_t* data, LONG size, StreamFormat* format) {
  WAVEFORMATEX wave{};
  if (size < kPcmFormatSize) return AVIERR_BADFORMAT;
  std::memcpy(&wave, data, std::min<size_t>(size_t(size), sizeof(wave)));
  AVCodecID codec = PcmCodec(wave.wBitsPerSample);
  if (wave.wFormatTag != WAVE_FORMAT_PCM || codec == AV_CODEC_ID_NONE) return AVIERR_BADFORMAT;
  if (wave.nChannels == 0 || wave.nChannels > kMaxChannels) return AVIERR_BADFORMAT;
  if (wave.nSamplesPerSec == 0 || wave.nSamplesPerSec > kMaxSampleRate) return AVIERR_BADFORMAT;
  if (wave.nBlockAlign != wave.nChannels * wave.wBitsPerSample / 8) return AVIERR_BADFORMAT;
  format->type = AVMEDIA_TYPE_AUDIO;
  format->codec = codec;
  format->tag = WAVE_FORMAT_PCM;
  format->sampleRate = static_cast<int>(wave.nSamplesPerSec);
  format->channels = wave.nChannels;
  format->bitsPerSample = wave.wBitsPerSample;
  format->blockAlign = wave.nBlockAlign;
  return S_OK;
}

}  // namespace

HRESULT ReadStreamFormat(DWORD fccType, const void* data, LONG size, StreamFormat* format) {
  if (!data || size <= 0) return AVIERR_BADFORMAT;
  *format = StreamFormat{};
  const auto* bytes = static_cast<const uint8_t*>(data);
  if (fccType == streamtypeVIDEO) return ReadVideoFormat(bytes, size, format);
  if (fccType == streamtypeAUDIO) return ReadAudioFormat(bytes, size, format);
  return AVIERR_BADFORMAT;
}

HRESULT FillCodecParameters(const StreamFormat& format, AVCodecParameters* parameters) {
  parameters->codec_type = format.type;
  parameters->codec_id = format.codec;
  parameters->codec_tag = format.tag;
  if (format.type == AVMEDIA_TYPE_VIDEO) {
    parameters->width = format.width;
    parameters->height = format.height;
    parameters->bits_per_coded_sample = format.bitCount;
    parameters->format = format.pixelFormat;
    if (!format.extradata.empty()) {
      parameters->extradata = static_cast<uint8_t*>(av_mallocz(format.extradata.size() + AV_INPUT_BUFFER_PADDING_SIZE));
      if (!parameters->extradata) return AVIERR_MEMORY;
      std::memcpy(parameters->extradata, format.extradata.data(), format.extradata.size());
      parameters->extradata_size = static_cast<int>(format.extradata.size());
    }
  } else {
    parameters->sample_rate = format.sampleRate;
    av_channel_layout_default(&parameters->ch_layout, format.channels);
    parameters->bits_per_coded_sample = format.bitsPerSample;
    parameters->block_align = format.blockAlign;
    parameters->bit_rate = int64_t(format.sampleRate) * format.blockAlign * 8;
  }
  return S_OK;
}

}  // namespace tessel::platform
