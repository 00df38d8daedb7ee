// FFmpegVideoEncoder. Rate control aims at the target's average bit rate over the whole
// movie; key frames come at least every keyFrameSpacing frames. H.264 states its colour
// (matrix, primaries, transfer, limited range) in the stream, so that players turn the
// pictures back into the colours that came in.
#include "mfreadwrite/ffmpeg_video_encoder.h"

#include <algorithm>
#include <cmath>

#include "codecapi.h"
#include "mfapi.h"
#include "mferror.h"
#include "mfreadwrite/h264_preset.h"

namespace tessel::platform {

namespace {

// Without a spacing in the type, a key frame every two seconds: a player that seeks or
// joins late waits no longer than that.
constexpr double kDefaultKeyFrameSeconds = 2.0;

int KeyFrameSpacing(const VideoTarget& target) {
  if (target.keyFrameSpacing > 0) return target.keyFrameSpacing;
  return std::max(1, int(std::lround(kDefaultKeyFrameSeconds * av_q2d(target.frameRate))));
}

const char* X264Profile(int profile) {
  switch (profile) {
    case eAVEncH264VProfile_Base:
    case eAVEncH264VProfile_ConstrainedBase: return "baseline";
    case eAVEncH264VProfile_Main: return "main";
    case eAVEncH264VProfile_High: return "high";
    default: return nullptr;
  }
}

void DescribeColour(const VideoTarget& target, AVCodecContext* context) {
  context->colorspace = YuvMatrix(target) == AVCOL_SPC_BT709 ? AVCOL_SPC_BT709 : AVCOL_SPC_SMPTE170M;
  // The pictures come from RGB, whose primaries and transfer are those of BT.709.
  context->color_primaries = AVCOL_PRI_BT709;
  context->color_trc = AVCOL_TRC_BT709;
  context->color_range = AVCOL_RANGE_MPEG;
}

void SetH264Options(const VideoTarget& target, AVCodecContext* context, AVDictionary** options) {
  av_dict_set(options, "preset", H264Preset().c_str(), 0);
  if (const char* profile = X264Profile(target.profile)) av_dict_set(options, "profile", profile, 0);
  if (target.level > 0) context->level = target.level;
  DescribeColour(target, context);
}

}  // namespace

HRESULT FFmpegVideoEncoder::Open(const VideoTarget& target, const AVCodec* codec, const ContainerNeeds& needs,
                                 std::unique_ptr<VideoEncoder>* encoder) {
  CodecContextPtr context(avcodec_alloc_context3(codec));
  if (!context) return E_OUTOFMEMORY;
  context->width = target.width;
  context->height = target.height;
  context->pix_fmt = AV_PIX_FMT_YUV420P;
  context->time_base = av_inv_q(target.frameRate);
  context->framerate = target.frameRate;
  context->sample_aspect_ratio = target.pixelAspect;
  context->bit_rate = target.bitRate;
  context->gop_size = KeyFrameSpacing(target);
  if (needs.globalHeaders) context->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
  if (!needs.reorderedFrames) context->max_b_frames = 0;
  AVDictionary* options = nullptr;
  if (target.subtype == MFVideoFormat_H264) SetH264Options(target, context.get(), &options);
  HRESULT hr = OpenEncoder(context.get(), codec, &options);
  av_dict_free(&options);
  if (FAILED(hr)) return hr;
  encoder->reset(new (std::nothrow) FFmpegVideoEncoder(std::move(context)));
  return *encoder ? S_OK : E_OUTOFMEMORY;
}

HRESULT FFmpegVideoEncoder::Describe(AVCodecParameters* parameters) const {
  return avcodec_parameters_from_context(parameters, context_.get()) < 0 ? E_OUTOFMEMORY : S_OK;
}

HRESULT FFmpegVideoEncoder::Encode(const AVFrame* picture, std::vector<PacketPtr>* packets) {
  size_t first = packets->size();
  HRESULT hr = EncodeFrame(context_.get(), picture, packets);
  for (size_t i = first; i < packets->size(); ++i) {
    if ((*packets)[i]->duration == 0) (*packets)[i]->duration = 1;
  }
  return hr;
}

}  // namespace tessel::platform
