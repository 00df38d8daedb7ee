// Accepting output types and describing them.
#include "mfreadwrite/output_format.h"

#include "com.h"
#include "mfapi.h"
#include "mferror.h"

namespace tessel::platform {

namespace {

struct VideoSubtype {
  const GUID* subtype;
  AVPixelFormat pixelFormat;
  VideoProcessing needs;
};

const VideoSubtype kVideoSubtypes[] = {
    {&MFVideoFormat_YUY2, AV_PIX_FMT_YUYV422, VideoProcessing::kNone},
    {&MFVideoFormat_YVYU, AV_PIX_FMT_YVYU422, VideoProcessing::kNone},
    // The unused byte of RGB32 is written as opaque alpha: the conversion's fast path.
    {&MFVideoFormat_RGB32, AV_PIX_FMT_BGRA, VideoProcessing::kBasic},
    {&MFVideoFormat_ARGB32, AV_PIX_FMT_BGRA, VideoProcessing::kAdvanced},
    {&MFVideoFormat_RGB24, AV_PIX_FMT_BGR24, VideoProcessing::kAdvanced},
    {&MFVideoFormat_RGB555, AV_PIX_FMT_RGB555LE, VideoProcessing::kAdvanced},
    {&MFVideoFormat_RGB565, AV_PIX_FMT_RGB565LE, VideoProcessing::kAdvanced},
};

constexpr UINT32 kMaxAudioRate = 384000;
constexpr UINT32 kMaxAudioChannels = 8;

const VideoSubtype* FindVideoSubtype(const GUID& subtype) {
  for (const VideoSubtype& entry : kVideoSubtypes) {
    if (*entry.subtype == subtype) return &entry;
  }
  return nullptr;
}

bool SameMajorType(IMFMediaType* wanted, IMFMediaType* native) {
  GUID a, b;
  return SUCCEEDED(wanted->GetGUID(MF_MT_MAJOR_TYPE, &a)) && SUCCEEDED(native->GetGUID(MF_MT_MAJOR_TYPE, &b)) &&
         a == b;
}

}  // namespace

HRESULT AcceptVideoOutput(IMFMediaType* wanted, IMFMediaType* native, VideoProcessing processing,
                          VideoOutput* output) {
  GUID subtype;
  if (!SameMajorType(wanted, native) || FAILED(wanted->GetGUID(MF_MT_SUBTYPE, &subtype))) {
    return MF_E_INVALIDMEDIATYPE;
  }
  const VideoSubtype* entry = FindVideoSubtype(subtype);
  if (!entry || entry->needs > processing) return MF_E_INVALIDMEDIATYPE;
  UINT32 nativeWidth = 0, nativeHeight = 0, width = 0, height = 0;
  if (FAILED(MFGetAttributeSize(native, MF_MT_FRAME_SIZE, &nativeWidth, &nativeHeight))) return MF_E_INVALIDMEDIATYPE;
  if (FAILED(MFGetAttributeSize(wanted, MF_MT_FRAME_SIZE, &width, &height))) {
    width = nativeWidth;
    height = nativeHeight;
  }
  bool scaled = width != nativeWidth || height != nativeHeight;
  if (scaled && processing != VideoProcessing::kAdvanced) return MF_E_INVALIDMEDIATYPE;
  UINT32 aspectNumerator = 1, aspectDenominator = 1;
  if (FAILED(MFGetAttributeRatio(wanted, MF_MT_PIXEL_ASPECT_RATIO, &aspectNumerator, &aspectDenominator))) {
    MFGetAttributeRatio(native, MF_MT_PIXEL_ASPECT_RATIO, &aspectNumerator, &aspectDenominator);
  }
  if (aspectNumerator == 0 || aspectDenominator == 0) return MF_E_INVALIDMEDIATYPE;
  VideoOutput made{subtype, entry->pixelFormat, aspectNumerator, aspectDenominator, {}};
  if (FAILED(LayoutForImage(subtype.Data1, width, height, &made.layout))) return MF_E_INVALIDMEDIATYPE;
  *output = made;
  return S_OK;
}

HRESULT AcceptAudioOutput(IMFMediaType* wanted, IMFMediaType* native, AudioOutput* output) {
  GUID subtype;
  if (!SameMajorType(wanted, native) || FAILED(wanted->GetGUID(MF_MT_SUBTYPE, &subtype))) {
    return MF_E_INVALIDMEDIATYPE;
  }
  AudioOutput made{subtype, AV_SAMPLE_FMT_NONE, 0, 0, 0};
  made.rate = MFGetAttributeUINT32(wanted, MF_MT_AUDIO_SAMPLES_PER_SECOND,
                                   MFGetAttributeUINT32(native, MF_MT_AUDIO_SAMPLES_PER_SECOND, 0));
  made.channels = MFGetAttributeUINT32(wanted, MF_MT_AUDIO_NUM_CHANNELS,
                                       MFGetAttributeUINT32(native, MF_MT_AUDIO_NUM_CHANNELS, 0));
  if (subtype == MFAudioFormat_Float) {
    made.bits = MFGetAttributeUINT32(wanted, MF_MT_AUDIO_BITS_PER_SAMPLE, 32);
    if (made.bits == 32) made.sampleFormat = AV_SAMPLE_FMT_FLT;
  } else if (subtype == MFAudioFormat_PCM) {
    made.bits = MFGetAttributeUINT32(wanted, MF_MT_AUDIO_BITS_PER_SAMPLE, 16);
    switch (made.bits) {
      case 8: made.sampleFormat = AV_SAMPLE_FMT_U8; break;
      case 16: made.sampleFormat = AV_SAMPLE_FMT_S16; break;
      case 24:
      case 32: made.sampleFormat = AV_SAMPLE_FMT_S32; break;
      default: break;
    }
  }
  if (made.sampleFormat == AV_SAMPLE_FMT_NONE || made.rate == 0 || made.rate > kMaxAudioRate ||
      made.channels == 0 || made.channels > kMaxAudioChannels) {
    return MF_E_INVALIDMEDIATYPE;
  }
  *output = made;
  return S_OK;
}

HRESULT CreateVideoCurrentType(const VideoOutput& output, IMFMediaType* native, IMFMediaType** type) {
  ComPtr<IMFMediaType> made;
  HRESULT hr = MFCreateMediaType(&made);
  UINT64 rate = MFGetAttributeUINT64(native, MF_MT_FRAME_RATE, Pack2UINT32AsUINT64(0, 1));
  if (SUCCEEDED(hr)) hr = made->SetGUID(MF_MT_MAJOR_TYPE, MFMediaType_Video);
  if (SUCCEEDED(hr)) hr = made->SetGUID(MF_MT_SUBTYPE, output.subtype);
  if (SUCCEEDED(hr)) hr = MFSetAttributeSize(made.Get(), MF_MT_FRAME_SIZE, output.layout.width, output.layout.height);
  if (SUCCEEDED(hr)) hr = made->SetUINT64(MF_MT_FRAME_RATE, rate);
  if (SUCCEEDED(hr)) {
    hr = MFSetAttributeRatio(made.Get(), MF_MT_PIXEL_ASPECT_RATIO, output.aspectNumerator, output.aspectDenominator);
  }
  if (SUCCEEDED(hr)) hr = made->SetUINT32(MF_MT_VIDEO_ROTATION, MFGetAttributeUINT32(native, MF_MT_VIDEO_ROTATION, 0));
  if (SUCCEEDED(hr)) hr = made->SetUINT32(MF_MT_DEFAULT_STRIDE, output.layout.pitch);
  if (SUCCEEDED(hr)) hr = made->SetUINT32(MF_MT_SAMPLE_SIZE, output.layout.bytes);
  if (SUCCEEDED(hr)) hr = made->SetUINT32(MF_MT_FIXED_SIZE_SAMPLES, TRUE);
  if (SUCCEEDED(hr)) hr = made->SetUINT32(MF_MT_ALL_SAMPLES_INDEPENDENT, TRUE);
  if (SUCCEEDED(hr)) hr = made->SetUINT32(MF_MT_INTERLACE_MODE, 2);  // MFVideoInterlace_Progressive
  if (SUCCEEDED(hr)) *type = made.Detach();
  return hr;
}

HRESULT CreateAudioCurrentType(const AudioOutput& output, IMFMediaType** type) {
  ComPtr<IMFMediaType> made;
  UINT32 blockAlign = output.channels * output.bits / 8;
  HRESULT hr = MFCreateMediaType(&made);
  if (SUCCEEDED(hr)) hr = made->SetGUID(MF_MT_MAJOR_TYPE, MFMediaType_Audio);
  if (SUCCEEDED(hr)) hr = made->SetGUID(MF_MT_SUBTYPE, output.subtype);
  if (SUCCEEDED(hr)) hr = made->SetUINT32(MF_MT_AUDIO_SAMPLES_PER_SECOND, output.rate);
  if (SUCCEEDED(hr)) hr = made->SetUINT32(MF_MT_AUDIO_NUM_CHANNELS, output.channels);
  if (SUCCEEDED(hr)) hr = made->SetUINT32(MF_MT_AUDIO_BITS_PER_SAMPLE, output.bits);
  if (SUCCEEDED(hr)) hr = made->SetUINT32(MF_MT_AUDIO_BLOCK_ALIGNMENT, blockAlign);
  if (SUCCEEDED(hr)) hr = made->SetUINT32(MF_MT_AUDIO_AVG_BYTES_PER_SECOND, blockAlign * output.rate);
  if (SUCCEEDED(hr)) hr = made->SetUINT32(MF_MT_ALL_SAMPLES_INDEPENDENT, TRUE);
  if (SUCCEEDED(hr)) *type = made.Detach();
  return hr;
}

}  // namespace tessel::platform
