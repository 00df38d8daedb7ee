// The codec table.
#include "mfreadwrite/codec_subtypes.h"

#include "mfapi.h"

namespace tessel::platform {

namespace {

struct CodecSubtype {
  AVCodecID codec;
  GUID subtype;
};

constexpr GUID FromTag(DWORD tag) {
  return {tag, 0x0000, 0x0010, {0x80, 0x00, 0x00, 0xaa, 0x00, 0x38, 0x9b, 0x71}};
}

const CodecSubtype kCodecs[] = {
    {AV_CODEC_ID_H264, MFVideoFormat_H264},
    {AV_CODEC_ID_HEVC, MFVideoFormat_HEVC},
    {AV_CODEC_ID_MPEG4, MFVideoFormat_MP4V},
    {AV_CODEC_ID_MSMPEG4V3, MFVideoFormat_MP43},
    {AV_CODEC_ID_MSMPEG4V2, FromTag(MFFourCC("MP42"))},
    {AV_CODEC_ID_WMV1, MFVideoFormat_WMV1},
    {AV_CODEC_ID_WMV2, MFVideoFormat_WMV2},
    {AV_CODEC_ID_WMV3, MFVideoFormat_WMV3},
    {AV_CODEC_ID_VC1, MFVideoFormat_WVC1},
    {AV_CODEC_ID_MJPEG, MFVideoFormat_MJPG},
    {AV_CODEC_ID_MPEG1VIDEO, MFVideoFormat_MPG1},
    {AV_CODEC_ID_MPEG2VIDEO, MFVideoFormat_MPEG2},
    {AV_CODEC_ID_DVVIDEO, MFVideoFormat_DVSD},
    {AV_CODEC_ID_H263, MFVideoFormat_H263},
    {AV_CODEC_ID_VP8, MFVideoFormat_VP80},
    {AV_CODEC_ID_VP9, MFVideoFormat_VP90},
    {AV_CODEC_ID_AAC, MFAudioFormat_AAC},
    {AV_CODEC_ID_MP3, MFAudioFormat_MP3},
    {AV_CODEC_ID_MP2, MFAudioFormat_MPEG},
    {AV_CODEC_ID_MP1, MFAudioFormat_MPEG},
    {AV_CODEC_ID_WMAV1, FromTag(0x0160)},
    {AV_CODEC_ID_WMAV2, MFAudioFormat_WMAudioV8},
    {AV_CODEC_ID_WMAPRO, MFAudioFormat_WMAudioV9},
    {AV_CODEC_ID_WMALOSSLESS, MFAudioFormat_WMAudio_Lossless},
    {AV_CODEC_ID_WMAVOICE, MFAudioFormat_MSP1},
    {AV_CODEC_ID_AC3, MFAudioFormat_Dolby_AC3},
    {AV_CODEC_ID_DTS, MFAudioFormat_DTS},
    {AV_CODEC_ID_FLAC, MFAudioFormat_FLAC},
    {AV_CODEC_ID_AMR_NB, MFAudioFormat_AMR_NB},
    {AV_CODEC_ID_AMR_WB, MFAudioFormat_AMR_WB},
    {AV_CODEC_ID_PCM_U8, MFAudioFormat_PCM},
    {AV_CODEC_ID_PCM_S16LE, MFAudioFormat_PCM},
    {AV_CODEC_ID_PCM_S24LE, MFAudioFormat_PCM},
    {AV_CODEC_ID_PCM_S32LE, MFAudioFormat_PCM},
    {AV_CODEC_ID_PCM_F32LE, MFAudioFormat_Float},
    {AV_CODEC_ID_PCM_F64LE, MFAudioFormat_Float},
};

}  // namespace

GUID SubtypeForCodec(const AVCodecParameters& codec) {
  if (codec.codec_id == AV_CODEC_ID_DVVIDEO && codec.height > 576) return MFVideoFormat_DVHD;
  for (const CodecSubtype& entry : kCodecs) {
    if (entry.codec == codec.codec_id) return entry.subtype;
  }
  return FromTag(codec.codec_tag);
}

}  // namespace tessel::platform
