// Reading the video types of the sink writer.
#include "mfreadwrite/sink_video_types.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>

#include "codecapi.h"
#include "mfapi.h"
#include "mferror.h"
#include "mfplat/buffers.h"

namespace tessel::platform {

namespace {

constexpr UINT32 kMaxSide = 8192;
constexpr UINT32 kLevelChosenByEncoder = 0xFFFFFFFF;
constexpr int kLevels[] = {10, 11, 12, 13, 20, 21, 22, 30, 31, 32, 40, 41, 42, 50, 51, 52};
constexpr int kProfiles[] = {eAVEncH264VProfile_Base, eAVEncH264VProfile_Main, eAVEncH264VProfile_High,
                             eAVEncH264VProfile_ConstrainedBase};
constexpr int kHdLines = 720;

// A ratio attribute in lowest terms; false when absent or not above zero.
bool ReadRatio(IMFMediaType* type, REFGUID key, AVRational* ratio) {
  UINT32 numerator = 0, denominator = 0;
  if (FAILED(MFGetAttributeRatio(type, key, &numerator, &denominator)) || !numerator || !denominator) return false;
  av_reduce(&ratio->num, &ratio->den, numerator, denominator, INT32_MAX);
  return true;
}

bool IsProgressive(IMFMediaType* type) {
  UINT32 mode = MFGetAttributeUINT32(type, MF_MT_INTERLACE_MODE, MFVideoInterlace_Progressive);
  return mode == MFVideoInterlace_Progressive || mode == MFVideoInterlace_Unknown;
}

// The profile and level, which only H.264 reads.
HRESULT ReadH264Settings(IMFMediaType* type, VideoTarget* target) {
  target->profile = int(MFGetAttributeUINT32(type, MF_MT_MPEG2_PROFILE, eAVEncH264VProfile_unknown));
  UINT32 level = MFGetAttributeUINT32(type, MF_MT_MPEG2_LEVEL, kLevelChosenByEncoder);
  target->level = level == kLevelChosenByEncoder ? 0 : int(level);
  bool knownProfile = target->profile == 0 || std::find(std::begin(kProfiles), std::end(kProfiles),
                                                        target->profile) != std::end(kProfiles);
  bool knownLevel =
      target->level == 0 || std::find(std::begin(kLevels), std::end(kLevels), target->level) != std::end(kLevels);
  return knownProfile && knownLevel ? S_OK : MF_E_INVALIDMEDIATYPE;
}

}  // namespace

HRESULT ReadVideoTarget(IMFMediaType* type, VideoTarget* target) {
  *target = {};
  UINT32 width = 0, height = 0, bitRate = 0;
  if (FAILED(type->GetGUID(MF_MT_SUBTYPE, &target->subtype)) ||
      FAILED(MFGetAttributeSize(type, MF_MT_FRAME_SIZE, &width, &height)) ||
      FAILED(type->GetUINT32(MF_MT_AVG_BITRATE, &bitRate)) || bitRate == 0 ||
      !ReadRatio(type, MF_MT_FRAME_RATE, &target->frameRate) || !IsProgressive(type)) {
    return MF_E_INVALIDMEDIATYPE;
  }
  if (width == 0 || height == 0 || width > kMaxSide || height > kMaxSide || width % 2 || height % 2) {
    return MF_E_INVALIDMEDIATYPE;
  }
  target->width = int(width);
  target->height = int(height);
  target->bitRate = bitRate;
  if (!ReadRatio(type, MF_MT_PIXEL_ASPECT_RATIO, &target->pixelAspect)) target->pixelAspect = {1, 1};
  target->keyFrameSpacing = int(std::min<UINT32>(MFGetAttributeUINT32(type, MF_MT_MAX_KEYFRAME_SPACING, 0), INT32_MAX));
  return target->subtype == MFVideoFormat_H264 ? ReadH264Settings(type, target) : S_OK;
}

AVColorSpace YuvMatrix(const VideoTarget& target) {
  return target.subtype == MFVideoFormat_H264 && target.height >= kHdLines ? AVCOL_SPC_BT709 : AVCOL_SPC_BT470BG;
}

HRESULT ReadVideoInput(IMFMediaType* type, const VideoTarget& target, VideoInput* input) {
  GUID subtype = GUID_NULL;
  UINT32 width = 0, height = 0;
  AVRational rate{}, aspect{};
  if (FAILED(type->GetGUID(MF_MT_SUBTYPE, &subtype)) ||
      FAILED(MFGetAttributeSize(type, MF_MT_FRAME_SIZE, &width, &height)) || int(width) != target.width ||
      int(height) != target.height || !IsProgressive(type)) {
    return MF_E_INVALIDMEDIATYPE;
  }
  if (ReadRatio(type, MF_MT_FRAME_RATE, &rate) && av_cmp_q(rate, target.frameRate) != 0) return MF_E_INVALIDMEDIATYPE;
  if (ReadRatio(type, MF_MT_PIXEL_ASPECT_RATIO, &aspect) && av_cmp_q(aspect, target.pixelAspect) != 0) {
    return MF_E_INVALIDMEDIATYPE;
  }
  if (subtype != MFVideoFormat_RGB32 && subtype != MFVideoFormat_YUY2) return MF_E_INVALIDMEDIATYPE;
  bool rgb = subtype == MFVideoFormat_RGB32;
  input->format = rgb ? AV_PIX_FMT_BGRA : AV_PIX_FMT_YUYV422;
  int rowBytes = target.width * (rgb ? 4 : 2);
  // Rows of RGB32 whose type states no stride. The system's colour converter in front of
  // its H.264 encoder reads RGB as bitmaps are laid out, bottom-up (the default stride of
  // RGB formats is negative), while its WMV encoders take RGB32 themselves and read it
  // top-down. Programs written for the system therefore hand H.264 their rows last
  // picture row first and the WMV codecs first row first, and get upright movies from
  // both; reading the rows the same way keeps their movies upright here. YUY2 is
  // top-down for every codec.
  INT32 stride = INT32(MFGetAttributeUINT32(type, MF_MT_DEFAULT_STRIDE, 0));
  int64_t pitch = stride != 0 ? std::llabs(int64_t(stride)) : rowBytes;
  if (pitch < rowBytes) return MF_E_INVALIDMEDIATYPE;
  input->pitch = int(pitch);
  input->bottomUp = stride != 0 ? stride < 0 : rgb && target.subtype == MFVideoFormat_H264;
  input->frameBytes = size_t(input->pitch) * size_t(target.height);
  return input->frameBytes <= kMaxBufferBytes ? S_OK : MF_E_INVALIDMEDIATYPE;
}

}  // namespace tessel::platform
