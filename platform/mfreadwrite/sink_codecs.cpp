// The sink writer's codecs.
#include "mfreadwrite/sink_codecs.h"

#include <cerrno>

#include "mfapi.h"
#include "mferror.h"
#include "mfreadwrite/av_status.h"
#include "platform_counters.h"

namespace tessel::platform {

namespace {

const SinkCodec kCodecs[] = {
    {&MFVideoFormat_H264, AVMEDIA_TYPE_VIDEO, "libx264"}, {&MFVideoFormat_WMV1, AVMEDIA_TYPE_VIDEO, "wmv1"},
    {&MFVideoFormat_WMV2, AVMEDIA_TYPE_VIDEO, "wmv2"},    {&MFVideoFormat_WMV3, AVMEDIA_TYPE_VIDEO, nullptr},
    {&MFAudioFormat_AAC, AVMEDIA_TYPE_AUDIO, "aac"},      {&MFAudioFormat_MP3, AVMEDIA_TYPE_AUDIO, "libmp3lame"},
};

}  // namespace

const SinkCodec* FindSinkCodec(REFGUID subtype) {
  for (const SinkCodec& codec : kCodecs) {
    if (*codec.subtype == subtype) return &codec;
  }
  return nullptr;
}

HRESULT FindEncoder(REFGUID subtype, const AVCodec** encoder) {
  const SinkCodec* codec = FindSinkCodec(subtype);
  if (!codec) return MF_E_INVALIDMEDIATYPE;
  *encoder = codec->encoder ? avcodec_find_encoder_by_name(codec->encoder) : nullptr;
  return *encoder ? S_OK : MF_E_TOPO_CODEC_NOT_FOUND;
}

HRESULT CheckEncoder(REFGUID subtype) {
  if (subtype == MFVideoFormat_WMV3) return S_OK;
  const AVCodec* encoder = nullptr;
  return FindEncoder(subtype, &encoder);
}

HRESULT TakeInjectedOpenFailure() { return GetCounters().failNextEncoderOpen.exchange(0); }

HRESULT OpenEncoder(AVCodecContext* context, const AVCodec* encoder, AVDictionary** options) {
  HRESULT injected = TakeInjectedOpenFailure();
  if (FAILED(injected)) return injected;
  int error = avcodec_open2(context, encoder, options);
  if (error == AVERROR(ENOMEM)) return E_OUTOFMEMORY;
  return error < 0 ? MF_E_INVALIDMEDIATYPE : S_OK;
}

HRESULT EncodeFrame(AVCodecContext* context, const AVFrame* frame, std::vector<PacketPtr>* packets) {
  int error = avcodec_send_frame(context, frame);
  if (error < 0 && error != AVERROR_EOF) return StatusFromWriteError(error);
  for (;;) {
    PacketPtr packet(av_packet_alloc());
    if (!packet) return E_OUTOFMEMORY;
    error = avcodec_receive_packet(context, packet.get());
    if (error == AVERROR(EAGAIN) || error == AVERROR_EOF) return S_OK;
    if (error < 0) return StatusFromWriteError(error);
    packets->push_back(std::move(packet));
  }
}

}  // namespace tessel::platform
