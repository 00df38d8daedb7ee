// Wmv3VideoEncoder. Key frames come at the target's spacing or, without one, at the
// encoder's own default of five seconds; the rate control holds the average bit rate.
#include "mfreadwrite/wmv3_video_encoder.h"

#include <cstring>

#include "mferror.h"
#include "mfreadwrite/sink_codecs.h"

namespace tessel::platform {

namespace {

Wmv3EncoderSettings SettingsFor(const VideoTarget& target) {
  Wmv3EncoderSettings settings;
  settings.width = target.width;
  settings.height = target.height;
  settings.rateNum = target.frameRate.num;
  settings.rateDen = target.frameRate.den;
  settings.bitRate = target.bitRate;
  settings.keyFrameSpacing = target.keyFrameSpacing;
  return settings;
}

Wmv3Picture PictureOf(const AVFrame* frame) {
  Wmv3Picture picture;
  for (int plane = 0; plane < 3; ++plane) {
    picture.planes[plane] = frame->data[plane];
    picture.strides[plane] = frame->linesize[plane];
  }
  return picture;
}

}  // namespace

HRESULT Wmv3VideoEncoder::Open(const VideoTarget& target, std::unique_ptr<VideoEncoder>* encoder) {
  HRESULT hr = TakeInjectedOpenFailure();
  if (FAILED(hr)) return hr;
  std::unique_ptr<Wmv3Encoder> wmv3;
  hr = Wmv3Encoder::Create(SettingsFor(target), &wmv3);
  if (hr == E_INVALIDARG) return MF_E_INVALIDMEDIATYPE;
  if (FAILED(hr)) return hr;
  encoder->reset(new (std::nothrow) Wmv3VideoEncoder(target, std::move(wmv3)));
  return *encoder ? S_OK : E_OUTOFMEMORY;
}

HRESULT Wmv3VideoEncoder::Describe(AVCodecParameters* parameters) const {
  const std::array<uint8_t, 4>& header = encoder_->SequenceHeader();
  parameters->extradata = static_cast<uint8_t*>(av_mallocz(header.size() + AV_INPUT_BUFFER_PADDING_SIZE));
  if (!parameters->extradata) return E_OUTOFMEMORY;
  std::memcpy(parameters->extradata, header.data(), header.size());
  parameters->extradata_size = int(header.size());
  parameters->codec_type = AVMEDIA_TYPE_VIDEO;
  parameters->codec_id = AV_CODEC_ID_WMV3;
  parameters->codec_tag = MKTAG('W', 'M', 'V', '3');
  parameters->format = AV_PIX_FMT_YUV420P;
  parameters->width = target_.width;
  parameters->height = target_.height;
  parameters->sample_aspect_ratio = target_.pixelAspect;
  parameters->bit_rate = target_.bitRate;
  parameters->color_space = AVCOL_SPC_BT470BG;
  parameters->color_range = AVCOL_RANGE_MPEG;
  return S_OK;
}

HRESULT Wmv3VideoEncoder::Encode(const AVFrame* picture, std::vector<PacketPtr>* packets) {
  if (!picture) return S_OK;
  bool keyFrame = false;
  HRESULT hr = encoder_->Encode(PictureOf(picture), &frame_, &keyFrame);
  if (FAILED(hr)) return hr;
  PacketPtr packet(av_packet_alloc());
  if (!packet || av_new_packet(packet.get(), int(frame_.size())) < 0) return E_OUTOFMEMORY;
  std::memcpy(packet->data, frame_.data(), frame_.size());
  packet->pts = packet->dts = picture->pts;
  packet->duration = 1;
  if (keyFrame) packet->flags |= AV_PKT_FLAG_KEY;
  packets->push_back(std::move(packet));
  return S_OK;
}

}  // namespace tessel::platform
