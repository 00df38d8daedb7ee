// The AVI muxer on a file of its own.
#include "avifil32/avi_muxer.h"

#include <cerrno>
#include <new>

#include "mfreadwrite/codec_log.h"

namespace tessel::platform {

HRESULT AviMuxer::Create(const std::string& path, std::unique_ptr<AviMuxer>* muxer) {
  TakeOverCodecLog();
  auto made = std::unique_ptr<AviMuxer>(new (std::nothrow) AviMuxer);
  if (!made) return AVIERR_MEMORY;
  AVFormatContext* context = nullptr;
  if (avformat_alloc_output_context2(&context, nullptr, "avi", nullptr) < 0) return AVIERR_MEMORY;
  made->context_.reset(context);
  made->packet_.reset(av_packet_alloc());
  if (!made->packet_) return AVIERR_MEMORY;
  std::string url = "file:" + path;
  int error = avio_open(&context->pb, url.c_str(), AVIO_FLAG_WRITE);
  if (error < 0) return error == AVERROR(ENOMEM) ? AVIERR_MEMORY : AVIERR_FILEOPEN;
  *muxer = std::move(made);
  return S_OK;
}

HRESULT AviMuxer::AddStream(const StreamFormat& format, AVRational unit, int* stream) {
  if (FAILED(failure_)) return failure_;
  AVStream* added = avformat_new_stream(context_.get(), nullptr);
  if (!added) return Fail(AVIERR_MEMORY);
  try {
    units_.push_back(unit);
  } catch (const std::bad_alloc&) {
    return Fail(AVIERR_MEMORY);
  }
  added->time_base = unit;
  *stream = added->index;
  HRESULT hr = FillCodecParameters(format, added->codecpar);
  return FAILED(hr) ? Fail(hr) : S_OK;
}

HRESULT AviMuxer::Start() {
  if (FAILED(failure_)) return failure_;
  AVDictionary* options = nullptr;
  av_dict_set(&options, "flipped_raw_rgb", "1", 0);
  int error = avformat_write_header(context_.get(), &options);
  av_dict_free(&options);
  started_ = error >= 0;
  if (error == AVERROR(EINVAL)) return Fail(AVIERR_BADFORMAT);
  return Check(error);
}

HRESULT AviMuxer::Write(int stream, const uint8_t* data, size_t size, int64_t position, bool key) {
  if (FAILED(failure_)) return failure_;
  AVRational timeBase = context_->streams[stream]->time_base;
  AVPacket* packet = packet_.get();
  packet->data = const_cast<uint8_t*>(data);
  packet->size = static_cast<int>(size);
  packet->stream_index = stream;
  packet->pts = packet->dts = av_rescale_q(position, units_[stream], timeBase);
  packet->flags = key ? AV_PKT_FLAG_KEY : 0;
  int error = av_write_frame(context_.get(), packet);
  packet->data = nullptr;
  packet->size = 0;
  return Check(error);
}

HRESULT AviMuxer::Finish() {
  if (started_ && SUCCEEDED(failure_)) Check(av_write_trailer(context_.get()));
  Check(avio_closep(&context_->pb));
  return failure_;
}

// Write errors of the file show in its I/O context, which buffers what it writes.
HRESULT AviMuxer::Check(int error) {
  if (error < 0 || (context_->pb && context_->pb->error < 0)) {
    return Fail(error == AVERROR(ENOMEM) ? AVIERR_MEMORY : AVIERR_FILEWRITE);
  }
  return failure_;
}

HRESULT AviMuxer::Fail(HRESULT status) {
  if (SUCCEEDED(failure_)) failure_ = status;
  return failure_;
}

}  // namespace tessel::platform
