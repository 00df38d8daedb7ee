// The reference decode, straight on libavformat, libavcodec and libswscale.
#include "reference_decoder.h"

#include <cmath>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libswscale/swscale.h>
}

namespace tessel::platform_test {

namespace {

std::vector<uint8_t> Convert(const AVFrame& frame, AVPixelFormat format, int width, int height, int pitch) {
  SwsContext* scaler = sws_getContext(frame.width, frame.height, AVPixelFormat(frame.format), width, height, format,
                                      SWS_BICUBIC, nullptr, nullptr, nullptr);
  std::vector<uint8_t> image(size_t(pitch) * height);
  uint8_t* planes[4] = {image.data()};
  int pitches[4] = {pitch};
  sws_scale(scaler, frame.data, frame.linesize, 0, frame.height, planes, pitches);
  sws_freeContext(scaler);
  return image;
}

}  // namespace

std::vector<uint8_t> ReferenceFrame(const std::string& path, int index, AVPixelFormat format, int width, int height,
                                    int pitch) {
  AVFormatContext* input = nullptr;
  if (avformat_open_input(&input, path.c_str(), nullptr, nullptr) < 0) return {};
  std::vector<uint8_t> result;
  avformat_find_stream_info(input, nullptr);
  int stream = av_find_best_stream(input, AVMEDIA_TYPE_VIDEO, -1, -1, nullptr, 0);
  const AVCodec* codec = stream >= 0 ? avcodec_find_decoder(input->streams[stream]->codecpar->codec_id) : nullptr;
  AVCodecContext* decoder = codec ? avcodec_alloc_context3(codec) : nullptr;
  AVPacket* packet = av_packet_alloc();
  AVFrame* frame = av_frame_alloc();
  if (decoder && avcodec_parameters_to_context(decoder, input->streams[stream]->codecpar) >= 0 &&
      avcodec_open2(decoder, codec, nullptr) >= 0) {
    int seen = 0;
    bool draining = false;
    while (result.empty()) {
      int got = avcodec_receive_frame(decoder, frame);
      if (got == 0) {
        if (seen++ == index) result = Convert(*frame, format, width, height, pitch);
        av_frame_unref(frame);
        continue;
      }
      if (got == AVERROR_EOF || (got != AVERROR(EAGAIN))) break;
      if (draining) break;
      if (av_read_frame(input, packet) < 0) {
        avcodec_send_packet(decoder, nullptr);
        draining = true;
        continue;
      }
      if (packet->stream_index == stream) avcodec_send_packet(decoder, packet);
      av_packet_unref(packet);
    }
  }
  av_frame_free(&frame);
  av_packet_free(&packet);
  avcodec_free_context(&decoder);
  avformat_close_input(&input);
  return result;
}

double Psnr(const std::vector<uint8_t>& a, const std::vector<uint8_t>& b) {
  if (a.size() != b.size() || a.empty()) return 0;
  double sum = 0;
  for (size_t i = 0; i < a.size(); ++i) {
    double d = double(a[i]) - double(b[i]);
    sum += d * d;
  }
  if (sum == 0) return 100;
  return 10 * std::log10(255.0 * 255.0 / (sum / double(a.size())));
}

}  // namespace tessel::platform_test
