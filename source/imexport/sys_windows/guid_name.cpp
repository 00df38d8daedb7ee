#include "guid_name.h"

#include <mfapi.h>
#include <mfidl.h>
#include <objbase.h>

#include <iterator>

namespace tessel {

namespace {

struct GuidNameEntry {
  GUID guid;
  const char* name;
};

// The published names, searched in this order: the first match wins, so the one GUID
// that two names share reads as MFVideoFormat_Base.
constexpr GuidNameEntry GUID_NAMES[] = {
    {MF_MT_MAJOR_TYPE, "MF_MT_MAJOR_TYPE"},
    {MF_MT_SUBTYPE, "MF_MT_SUBTYPE"},
    {MF_MT_ALL_SAMPLES_INDEPENDENT, "MF_MT_ALL_SAMPLES_INDEPENDENT"},
    {MF_MT_FIXED_SIZE_SAMPLES, "MF_MT_FIXED_SIZE_SAMPLES"},
    {MF_MT_COMPRESSED, "MF_MT_COMPRESSED"},
    {MF_MT_SAMPLE_SIZE, "MF_MT_SAMPLE_SIZE"},
    {MF_MT_WRAPPED_TYPE, "MF_MT_WRAPPED_TYPE"},
    {MF_MT_AUDIO_NUM_CHANNELS, "MF_MT_AUDIO_NUM_CHANNELS"},
    {MF_MT_AUDIO_SAMPLES_PER_SECOND, "MF_MT_AUDIO_SAMPLES_PER_SECOND"},
    {MF_MT_AUDIO_FLOAT_SAMPLES_PER_SECOND, "MF_MT_AUDIO_FLOAT_SAMPLES_PER_SECOND"},
    {MF_MT_AUDIO_AVG_BYTES_PER_SECOND, "MF_MT_AUDIO_AVG_BYTES_PER_SECOND"},
    {MF_MT_AUDIO_BLOCK_ALIGNMENT, "MF_MT_AUDIO_BLOCK_ALIGNMENT"},
    {MF_MT_AUDIO_BITS_PER_SAMPLE, "MF_MT_AUDIO_BITS_PER_SAMPLE"},
    {MF_MT_AUDIO_VALID_BITS_PER_SAMPLE, "MF_MT_AUDIO_VALID_BITS_PER_SAMPLE"},
    {MF_MT_AUDIO_SAMPLES_PER_BLOCK, "MF_MT_AUDIO_SAMPLES_PER_BLOCK"},
    {MF_MT_AUDIO_CHANNEL_MASK, "MF_MT_AUDIO_CHANNEL_MASK"},
    {MF_MT_AUDIO_FOLDDOWN_MATRIX, "MF_MT_AUDIO_FOLDDOWN_MATRIX"},
    {MF_MT_AUDIO_WMADRC_PEAKREF, "MF_MT_AUDIO_WMADRC_PEAKREF"},
    {MF_MT_AUDIO_WMADRC_PEAKTARGET, "MF_MT_AUDIO_WMADRC_PEAKTARGET"},
    {MF_MT_AUDIO_WMADRC_AVGREF, "MF_MT_AUDIO_WMADRC_AVGREF"},
    {MF_MT_AUDIO_WMADRC_AVGTARGET, "MF_MT_AUDIO_WMADRC_AVGTARGET"},
    {MF_MT_AUDIO_PREFER_WAVEFORMATEX, "MF_MT_AUDIO_PREFER_WAVEFORMATEX"},
    {MF_MT_AAC_PAYLOAD_TYPE, "MF_MT_AAC_PAYLOAD_TYPE"},
    {MF_MT_AAC_AUDIO_PROFILE_LEVEL_INDICATION, "MF_MT_AAC_AUDIO_PROFILE_LEVEL_INDICATION"},
    {MF_MT_FRAME_SIZE, "MF_MT_FRAME_SIZE"},
    {MF_MT_FRAME_RATE, "MF_MT_FRAME_RATE"},
    {MF_MT_FRAME_RATE_RANGE_MAX, "MF_MT_FRAME_RATE_RANGE_MAX"},
    {MF_MT_FRAME_RATE_RANGE_MIN, "MF_MT_FRAME_RATE_RANGE_MIN"},
    {MF_MT_PIXEL_ASPECT_RATIO, "MF_MT_PIXEL_ASPECT_RATIO"},
    {MF_MT_DRM_FLAGS, "MF_MT_DRM_FLAGS"},
    {MF_MT_PAD_CONTROL_FLAGS, "MF_MT_PAD_CONTROL_FLAGS"},
    {MF_MT_SOURCE_CONTENT_HINT, "MF_MT_SOURCE_CONTENT_HINT"},
    {MF_MT_VIDEO_CHROMA_SITING, "MF_MT_VIDEO_CHROMA_SITING"},
    {MF_MT_INTERLACE_MODE, "MF_MT_INTERLACE_MODE"},
    {MF_MT_TRANSFER_FUNCTION, "MF_MT_TRANSFER_FUNCTION"},
    {MF_MT_VIDEO_PRIMARIES, "MF_MT_VIDEO_PRIMARIES"},
    {MF_MT_CUSTOM_VIDEO_PRIMARIES, "MF_MT_CUSTOM_VIDEO_PRIMARIES"},
    {MF_MT_YUV_MATRIX, "MF_MT_YUV_MATRIX"},
    {MF_MT_VIDEO_LIGHTING, "MF_MT_VIDEO_LIGHTING"},
    {MF_MT_VIDEO_NOMINAL_RANGE, "MF_MT_VIDEO_NOMINAL_RANGE"},
    {MF_MT_GEOMETRIC_APERTURE, "MF_MT_GEOMETRIC_APERTURE"},
    {MF_MT_MINIMUM_DISPLAY_APERTURE, "MF_MT_MINIMUM_DISPLAY_APERTURE"},
    {MF_MT_PAN_SCAN_APERTURE, "MF_MT_PAN_SCAN_APERTURE"},
    {MF_MT_PAN_SCAN_ENABLED, "MF_MT_PAN_SCAN_ENABLED"},
    {MF_MT_AVG_BITRATE, "MF_MT_AVG_BITRATE"},
    {MF_MT_AVG_BIT_ERROR_RATE, "MF_MT_AVG_BIT_ERROR_RATE"},
    {MF_MT_MAX_KEYFRAME_SPACING, "MF_MT_MAX_KEYFRAME_SPACING"},
    {MF_MT_DEFAULT_STRIDE, "MF_MT_DEFAULT_STRIDE"},
    {MF_MT_PALETTE, "MF_MT_PALETTE"},
    {MF_MT_USER_DATA, "MF_MT_USER_DATA"},
    {MF_MT_AM_FORMAT_TYPE, "MF_MT_AM_FORMAT_TYPE"},
    {MF_MT_MPEG_START_TIME_CODE, "MF_MT_MPEG_START_TIME_CODE"},
    {MF_MT_MPEG2_PROFILE, "MF_MT_MPEG2_PROFILE"},
    {MF_MT_MPEG2_LEVEL, "MF_MT_MPEG2_LEVEL"},
    {MF_MT_MPEG2_FLAGS, "MF_MT_MPEG2_FLAGS"},
    {MF_MT_MPEG_SEQUENCE_HEADER, "MF_MT_MPEG_SEQUENCE_HEADER"},
    {MF_MT_DV_AAUX_SRC_PACK_0, "MF_MT_DV_AAUX_SRC_PACK_0"},
    {MF_MT_DV_AAUX_CTRL_PACK_0, "MF_MT_DV_AAUX_CTRL_PACK_0"},
    {MF_MT_DV_AAUX_SRC_PACK_1, "MF_MT_DV_AAUX_SRC_PACK_1"},
    {MF_MT_DV_AAUX_CTRL_PACK_1, "MF_MT_DV_AAUX_CTRL_PACK_1"},
    {MF_MT_DV_VAUX_SRC_PACK, "MF_MT_DV_VAUX_SRC_PACK"},
    {MF_MT_DV_VAUX_CTRL_PACK, "MF_MT_DV_VAUX_CTRL_PACK"},
    {MF_MT_ARBITRARY_HEADER, "MF_MT_ARBITRARY_HEADER"},
    {MF_MT_ARBITRARY_FORMAT, "MF_MT_ARBITRARY_FORMAT"},
    {MF_MT_IMAGE_LOSS_TOLERANT, "MF_MT_IMAGE_LOSS_TOLERANT"},
    {MF_MT_MPEG4_SAMPLE_DESCRIPTION, "MF_MT_MPEG4_SAMPLE_DESCRIPTION"},
    {MF_MT_MPEG4_CURRENT_SAMPLE_ENTRY, "MF_MT_MPEG4_CURRENT_SAMPLE_ENTRY"},
    {MF_MT_ORIGINAL_4CC, "MF_MT_ORIGINAL_4CC"},
    {MF_MT_ORIGINAL_WAVE_FORMAT_TAG, "MF_MT_ORIGINAL_WAVE_FORMAT_TAG"},
    {MFMediaType_Audio, "MFMediaType_Audio"},
    {MFMediaType_Video, "MFMediaType_Video"},
    {MFMediaType_Protected, "MFMediaType_Protected"},
    {MFMediaType_SAMI, "MFMediaType_SAMI"},
    {MFMediaType_Script, "MFMediaType_Script"},
    {MFMediaType_Image, "MFMediaType_Image"},
    {MFMediaType_HTML, "MFMediaType_HTML"},
    {MFMediaType_Binary, "MFMediaType_Binary"},
    {MFMediaType_FileTransfer, "MFMediaType_FileTransfer"},
    {MFVideoFormat_Base, "MFVideoFormat_Base"},
    {MFVideoFormat_RGB32, "MFVideoFormat_RGB32"},
    {MFVideoFormat_ARGB32, "MFVideoFormat_ARGB32"},
    {MFVideoFormat_RGB24, "MFVideoFormat_RGB24"},
    {MFVideoFormat_RGB555, "MFVideoFormat_RGB555"},
    {MFVideoFormat_RGB565, "MFVideoFormat_RGB565"},
    {MFVideoFormat_RGB8, "MFVideoFormat_RGB8"},
    {MFVideoFormat_AI44, "MFVideoFormat_AI44"},
    {MFVideoFormat_AYUV, "MFVideoFormat_AYUV"},
    {MFVideoFormat_YUY2, "MFVideoFormat_YUY2"},
    {MFVideoFormat_YVYU, "MFVideoFormat_YVYU"},
    {MFVideoFormat_YVU9, "MFVideoFormat_YVU9"},
    {MFVideoFormat_UYVY, "MFVideoFormat_UYVY"},
    {MFVideoFormat_NV11, "MFVideoFormat_NV11"},
    {MFVideoFormat_NV12, "MFVideoFormat_NV12"},
    {MFVideoFormat_YV12, "MFVideoFormat_YV12"},
    {MFVideoFormat_I420, "MFVideoFormat_I420"},
    {MFVideoFormat_IYUV, "MFVideoFormat_IYUV"},
    {MFVideoFormat_Y210, "MFVideoFormat_Y210"},
    {MFVideoFormat_Y216, "MFVideoFormat_Y216"},
    {MFVideoFormat_Y410, "MFVideoFormat_Y410"},
    {MFVideoFormat_Y416, "MFVideoFormat_Y416"},
    {MFVideoFormat_Y41P, "MFVideoFormat_Y41P"},
    {MFVideoFormat_Y41T, "MFVideoFormat_Y41T"},
    {MFVideoFormat_Y42T, "MFVideoFormat_Y42T"},
    {MFVideoFormat_P210, "MFVideoFormat_P210"},
    {MFVideoFormat_P216, "MFVideoFormat_P216"},
    {MFVideoFormat_P010, "MFVideoFormat_P010"},
    {MFVideoFormat_P016, "MFVideoFormat_P016"},
    {MFVideoFormat_v210, "MFVideoFormat_v210"},
    {MFVideoFormat_v216, "MFVideoFormat_v216"},
    {MFVideoFormat_v410, "MFVideoFormat_v410"},
    {MFVideoFormat_MP43, "MFVideoFormat_MP43"},
    {MFVideoFormat_MP4S, "MFVideoFormat_MP4S"},
    {MFVideoFormat_M4S2, "MFVideoFormat_M4S2"},
    {MFVideoFormat_MP4V, "MFVideoFormat_MP4V"},
    {MFVideoFormat_WMV1, "MFVideoFormat_WMV1"},
    {MFVideoFormat_WMV2, "MFVideoFormat_WMV2"},
    {MFVideoFormat_WMV3, "MFVideoFormat_WMV3"},
    {MFVideoFormat_WVC1, "MFVideoFormat_WVC1"},
    {MFVideoFormat_MSS1, "MFVideoFormat_MSS1"},
    {MFVideoFormat_MSS2, "MFVideoFormat_MSS2"},
    {MFVideoFormat_MPG1, "MFVideoFormat_MPG1"},
    {MFVideoFormat_DVSL, "MFVideoFormat_DVSL"},
    {MFVideoFormat_DVSD, "MFVideoFormat_DVSD"},
    {MFVideoFormat_DVHD, "MFVideoFormat_DVHD"},
    {MFVideoFormat_DV25, "MFVideoFormat_DV25"},
    {MFVideoFormat_DV50, "MFVideoFormat_DV50"},
    {MFVideoFormat_DVH1, "MFVideoFormat_DVH1"},
    {MFVideoFormat_DVC, "MFVideoFormat_DVC"},
    {MFVideoFormat_H264, "MFVideoFormat_H264"},
    {MFVideoFormat_MJPG, "MFVideoFormat_MJPG"},
    {MFVideoFormat_420O, "MFVideoFormat_420O"},
    {MFVideoFormat_HEVC, "MFVideoFormat_HEVC"},
    {MFVideoFormat_HEVC_ES, "MFVideoFormat_HEVC_ES"},
    {MFVideoFormat_H263, "MFVideoFormat_H263"},
    {MFAudioFormat_Base, "MFAudioFormat_Base"},
    {MFAudioFormat_PCM, "MFAudioFormat_PCM"},
    {MFAudioFormat_Float, "MFAudioFormat_Float"},
    {MFAudioFormat_DTS, "MFAudioFormat_DTS"},
    {MFAudioFormat_Dolby_AC3_SPDIF, "MFAudioFormat_Dolby_AC3_SPDIF"},
    {MFAudioFormat_DRM, "MFAudioFormat_DRM"},
    {MFAudioFormat_WMAudioV8, "MFAudioFormat_WMAudioV8"},
    {MFAudioFormat_WMAudioV9, "MFAudioFormat_WMAudioV9"},
    {MFAudioFormat_WMAudio_Lossless, "MFAudioFormat_WMAudio_Lossless"},
    {MFAudioFormat_WMASPDIF, "MFAudioFormat_WMASPDIF"},
    {MFAudioFormat_MSP1, "MFAudioFormat_MSP1"},
    {MFAudioFormat_MP3, "MFAudioFormat_MP3"},
    {MFAudioFormat_MPEG, "MFAudioFormat_MPEG"},
    {MFAudioFormat_AAC, "MFAudioFormat_AAC"},
    {MFAudioFormat_ADTS, "MFAudioFormat_ADTS"},
    {MFAudioFormat_AMR_NB, "MFAudioFormat_AMR_NB"},
    {MFAudioFormat_AMR_WB, "MFAudioFormat_AMR_WB"},
    {MFAudioFormat_AMR_WP, "MFAudioFormat_AMR_WP"},
    {IID_IUnknown, "IUnknown"},
    {IID_IMFByteStream, "IMFByteStream"},
    {IID_IMFMediaSource, "IMFMediaSource"},
    {IID_IMFAttributes, "IMFAttributes"},
    {IID_IMFByteStreamBuffering, "IMFByteStreamBuffering"},
};
static_assert(std::size(GUID_NAMES) == 157);

}  // namespace

vorna::String GuidName(const GUID& guid) {
  vorna::String name;
  for (const GuidNameEntry& entry : GUID_NAMES) {
    if (IsEqualGUID(entry.guid, guid)) {
      if (name.SetCString(entry.name).IsError()) name.Reset();
      return name;
    }
  }
  LPWSTR text = nullptr;
  vorna::Result<void> set = SUCCEEDED(StringFromCLSID(guid, &text)) ? name.SetUtf16(text, -1) : name.SetCString("GuidUnknown");
  if (set.IsError()) name.Reset();
  CoTaskMemFree(text);
  return name;
}

}  // namespace tessel
