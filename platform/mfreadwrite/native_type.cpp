// Native media types of container streams.
#include "mfreadwrite/native_type.h"

#include <cmath>

#include "com.h"
#include "mfapi.h"
#include "mferror.h"
#include "mfreadwrite/codec_subtypes.h"

extern "C" {
#include <libavutil/display.h>
}

namespace tessel::platform {

namespace {

bool IsPcm(const GUID& subtype) { return subtype == MFAudioFormat_PCM || subtype == MFAudioFormat_Float; }

HRESULT DescribeVideo(const AVStream& stream, IMFMediaType* type) {
  const AVCodecParameters& codec = *stream.codecpar;
  AVRational rate = FrameRateOf(stream);
  AVRational aspect = codec.sample_aspect_ratio.num > 0 && codec.sample_aspect_ratio.den > 0
                          ? codec.sample_aspect_ratio
                          : AVRational{1, 1};
  av_reduce(&aspect.num, &aspect.den, aspect.num, aspect.den, INT32_MAX);
  HRESULT hr = type->SetGUID(MF_MT_MAJOR_TYPE, MFMediaType_Video);
  if (SUCCEEDED(hr)) hr = type->SetGUID(MF_MT_SUBTYPE, SubtypeForCodec(codec));
  if (SUCCEEDED(hr)) hr = MFSetAttributeSize(type, MF_MT_FRAME_SIZE, UINT32(codec.width), UINT32(codec.height));
  if (SUCCEEDED(hr)) hr = MFSetAttributeRatio(type, MF_MT_FRAME_RATE, UINT32(rate.num), UINT32(rate.den));
  if (SUCCEEDED(hr)) hr = MFSetAttributeRatio(type, MF_MT_PIXEL_ASPECT_RATIO, UINT32(aspect.num), UINT32(aspect.den));
  if (SUCCEEDED(hr)) hr = type->SetUINT32(MF_MT_VIDEO_ROTATION, RotationOf(stream));
  if (SUCCEEDED(hr)) hr = type->SetUINT32(MF_MT_INTERLACE_MODE, 2);  // MFVideoInterlace_Progressive
  if (SUCCEEDED(hr) && codec.bit_rate > 0) hr = type->SetUINT32(MF_MT_AVG_BITRATE, UINT32(codec.bit_rate));
  if (SUCCEEDED(hr) && codec.extradata_size > 0) {
    hr = type->SetBlob(MF_MT_MPEG_SEQUENCE_HEADER, codec.extradata, UINT32(codec.extradata_size));
  }
  return hr;
}

HRESULT DescribeAudio(const AVStream& stream, IMFMediaType* type) {
  const AVCodecParameters& codec = *stream.codecpar;
  GUID subtype = SubtypeForCodec(codec);
  UINT32 channels = UINT32(std::max(codec.ch_layout.nb_channels, 0));
  UINT32 rate = UINT32(std::max(codec.sample_rate, 0));
  UINT32 bits = UINT32(av_get_bits_per_sample(codec.codec_id));
  UINT32 bytesPerSecond = IsPcm(subtype) ? rate * channels * bits / 8 : UINT32(std::max<int64_t>(codec.bit_rate, 0) / 8);
  HRESULT hr = type->SetGUID(MF_MT_MAJOR_TYPE, MFMediaType_Audio);
  if (SUCCEEDED(hr)) hr = type->SetGUID(MF_MT_SUBTYPE, subtype);
  if (SUCCEEDED(hr)) hr = type->SetUINT32(MF_MT_AUDIO_SAMPLES_PER_SECOND, rate);
  if (SUCCEEDED(hr)) hr = type->SetUINT32(MF_MT_AUDIO_NUM_CHANNELS, channels);
  if (SUCCEEDED(hr)) hr = type->SetUINT32(MF_MT_AUDIO_AVG_BYTES_PER_SECOND, bytesPerSecond);
  if (SUCCEEDED(hr) && IsPcm(subtype)) hr = type->SetUINT32(MF_MT_AUDIO_BITS_PER_SAMPLE, bits);
  if (SUCCEEDED(hr) && IsPcm(subtype)) hr = type->SetUINT32(MF_MT_AUDIO_BLOCK_ALIGNMENT, channels * bits / 8);
  if (SUCCEEDED(hr) && !IsPcm(subtype) && codec.block_align > 0) {
    hr = type->SetUINT32(MF_MT_AUDIO_BLOCK_ALIGNMENT, UINT32(codec.block_align));
  }
  if (SUCCEEDED(hr) && codec.extradata_size > 0) {
    hr = type->SetBlob(MF_MT_USER_DATA, codec.extradata, UINT32(codec.extradata_size));
  }
  return hr;
}

}  // namespace

UINT32 RotationOf(const AVStream& stream) {
  const uint8_t* matrix = av_stream_get_side_data(&stream, AV_PKT_DATA_DISPLAYMATRIX, nullptr);
  if (!matrix) return 0;
  double counterClockwise = av_display_rotation_get(reinterpret_cast<const int32_t*>(matrix));
  if (std::isnan(counterClockwise)) return 0;
  long quarter = std::lround(-counterClockwise / 90.0);
  return UINT32(((quarter % 4) + 4) % 4 * 90);
}

AVRational FrameRateOf(const AVStream& stream) {
  AVRational rate = stream.avg_frame_rate;
  if (rate.num <= 0 || rate.den <= 0) rate = stream.r_frame_rate;
  if (rate.num <= 0 || rate.den <= 0) return {0, 1};
  av_reduce(&rate.num, &rate.den, rate.num, rate.den, INT32_MAX);
  return rate;
}

HRESULT CreateNativeType(const AVStream& stream, IMFMediaType** type) {
  ComPtr<IMFMediaType> made;
  HRESULT hr = MFCreateMediaType(&made);
  if (FAILED(hr)) return hr;
  switch (stream.codecpar->codec_type) {
    case AVMEDIA_TYPE_VIDEO: hr = DescribeVideo(stream, made.Get()); break;
    case AVMEDIA_TYPE_AUDIO: hr = DescribeAudio(stream, made.Get()); break;
    default:
      hr = made->SetGUID(MF_MT_MAJOR_TYPE, MFMediaType_Binary);
      if (SUCCEEDED(hr)) hr = made->SetGUID(MF_MT_SUBTYPE, SubtypeForCodec(*stream.codecpar));
      break;
  }
  if (SUCCEEDED(hr)) *type = made.Detach();
  return hr;
}

}  // namespace tessel::platform
