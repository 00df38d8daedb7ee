// One owner per FFmpeg object: unique_ptr types with the matching free function.
// Move-only; a null owner holds nothing.
#pragma once

#include <memory>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/audio_fifo.h>
#include <libavutil/frame.h>
#include <libswresample/swresample.h>
#include <libswscale/swscale.h>
}

namespace tessel::platform {

struct FormatContextDeleter {
  void operator()(AVFormatContext* context) const { avformat_close_input(&context); }
};
// A muxer's context whose AVIO context has an owner of its own.
struct OutputContextDeleter {
  void operator()(AVFormatContext* context) const { avformat_free_context(context); }
};
// A context made for writing that owns the file it opened, closed with it.
struct OutputFormatContextDeleter {
  void operator()(AVFormatContext* context) const {
    if (!(context->oformat->flags & AVFMT_NOFILE)) avio_closep(&context->pb);
    avformat_free_context(context);
  }
};
struct CodecContextDeleter {
  void operator()(AVCodecContext* context) const { avcodec_free_context(&context); }
};
struct FrameDeleter {
  void operator()(AVFrame* frame) const { av_frame_free(&frame); }
};
struct PacketDeleter {
  void operator()(AVPacket* packet) const { av_packet_free(&packet); }
};
struct ScalerDeleter {
  void operator()(SwsContext* scaler) const { sws_freeContext(scaler); }
};
struct ResamplerDeleter {
  void operator()(SwrContext* resampler) const { swr_free(&resampler); }
};
struct AudioFifoDeleter {
  void operator()(AVAudioFifo* fifo) const { av_audio_fifo_free(fifo); }
};
// The AVIO context and the buffer it currently holds (FFmpeg may have replaced the one
// it was given).
struct AvioContextDeleter {
  void operator()(AVIOContext* io) const {
    av_freep(&io->buffer);
    avio_context_free(&io);
  }
};

using FormatContextPtr = std::unique_ptr<AVFormatContext, FormatContextDeleter>;
using OutputContextPtr = std::unique_ptr<AVFormatContext, OutputContextDeleter>;
using OutputFormatContextPtr = std::unique_ptr<AVFormatContext, OutputFormatContextDeleter>;
using CodecContextPtr = std::unique_ptr<AVCodecContext, CodecContextDeleter>;
using FramePtr = std::unique_ptr<AVFrame, FrameDeleter>;
using PacketPtr = std::unique_ptr<AVPacket, PacketDeleter>;
using ScalerPtr = std::unique_ptr<SwsContext, ScalerDeleter>;
using ResamplerPtr = std::unique_ptr<SwrContext, ResamplerDeleter>;
using AudioFifoPtr = std::unique_ptr<AVAudioFifo, AudioFifoDeleter>;
using AvioContextPtr = std::unique_ptr<AVIOContext, AvioContextDeleter>;

}  // namespace tessel::platform
