#include "wmv3_decoder.h"

#include <cstring>

namespace tessel::platform_test {

Wmv3Decoder::Wmv3Decoder(const std::array<uint8_t, 4>& sequenceHeader, int width, int height, bool bitExact)
    : packet_(av_packet_alloc()), frame_(av_frame_alloc()) {
  const AVCodec* codec = avcodec_find_decoder(AV_CODEC_ID_WMV3);
  platform::CodecContextPtr context(avcodec_alloc_context3(codec));
  if (!codec || !context || !packet_ || !frame_) return;
  context->width = width;
  context->height = height;
  context->thread_count = 1;
  if (bitExact) context->flags |= AV_CODEC_FLAG_BITEXACT;
  context->extradata = static_cast<uint8_t*>(av_mallocz(sequenceHeader.size() + AV_INPUT_BUFFER_PADDING_SIZE));
  if (!context->extradata) return;
  std::memcpy(context->extradata, sequenceHeader.data(), sequenceHeader.size());
  context->extradata_size = static_cast<int>(sequenceHeader.size());
  if (avcodec_open2(context.get(), codec, nullptr) < 0) return;
  context_ = std::move(context);
}

bool Wmv3Decoder::Decode(const std::vector<uint8_t>& frame, bool keyFrame, DecodedPicture* picture) {
  if (av_new_packet(packet_.get(), static_cast<int>(frame.size())) < 0) return false;
  std::memcpy(packet_->data, frame.data(), frame.size());
  if (keyFrame) packet_->flags |= AV_PKT_FLAG_KEY;
  int sent = avcodec_send_packet(context_.get(), packet_.get());
  av_packet_unref(packet_.get());
  if (sent < 0 || avcodec_receive_frame(context_.get(), frame_.get()) < 0) return false;
  picture->width = frame_->width;
  picture->height = frame_->height;
  picture->key = frame_->key_frame != 0;
  for (int plane = 0; plane < 3; ++plane) {
    int width = plane ? (frame_->width + 1) / 2 : frame_->width;
    int height = plane ? (frame_->height + 1) / 2 : frame_->height;
    picture->planes[plane].resize(static_cast<size_t>(width) * height);
    for (int y = 0; y < height; ++y)
      std::memcpy(&picture->planes[plane][static_cast<size_t>(y) * width],
                  frame_->data[plane] + y * frame_->linesize[plane], width);
  }
  av_frame_unref(frame_.get());
  return true;
}

}  // namespace tessel::platform_test
