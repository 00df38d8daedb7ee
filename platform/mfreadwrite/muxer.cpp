// Muxer.
#include "mfreadwrite/muxer.h"

#include "mfreadwrite/av_status.h"

namespace tessel::platform {

HRESULT Muxer::Create(const SinkContainer& container, std::unique_ptr<OutputFile> file,
                      std::unique_ptr<Muxer>* muxer) {
  std::unique_ptr<Muxer> made(new (std::nothrow) Muxer(container, std::move(file)));
  if (!made) return E_OUTOFMEMORY;
  // The url lets the MPEG-4 muxer read the file back when it moves the index to the front.
  std::string url = "file:" + made->file_->Path();
  AVFormatContext* format = nullptr;
  if (avformat_alloc_output_context2(&format, nullptr, container.muxer, url.c_str()) < 0) return E_OUTOFMEMORY;
  made->format_.reset(format);
  format->pb = made->file_->Io();
  format->flags |= AVFMT_FLAG_CUSTOM_IO;
  // Packets wait until every stream has one, however far apart in time: a whole sound
  // track given before the first picture is spread over the file, not written in front.
  format->max_interleave_delta = 0;
  *muxer = std::move(made);
  return S_OK;
}

bool Muxer::WantsGlobalHeaders() const { return format_->oformat->flags & AVFMT_GLOBALHEADER; }

HRESULT Muxer::AddStream(const AVCodecParameters& parameters, AVRational timeBase, AVRational frameRate,
                         int* index) {
  AVStream* stream = avformat_new_stream(format_.get(), nullptr);
  if (!stream) return E_OUTOFMEMORY;
  if (avcodec_parameters_copy(stream->codecpar, &parameters) < 0) return E_OUTOFMEMORY;
  stream->time_base = timeBase;
  stream->avg_frame_rate = frameRate;
  stream->sample_aspect_ratio = parameters.sample_aspect_ratio;
  timeBases_.push_back(timeBase);
  *index = stream->index;
  return S_OK;
}

HRESULT Muxer::Check(int error) {
  if (error < 0 && SUCCEEDED(failed_)) failed_ = StatusFromWriteError(error);
  if (file_->Io()->error < 0 && SUCCEEDED(failed_)) failed_ = StatusFromWriteError(file_->Io()->error);
  return failed_;
}

HRESULT Muxer::Begin() {
  AVDictionary* options = nullptr;
  av_dict_parse_string(&options, container_.options, "=", ":", 0);
  int error = avformat_write_header(format_.get(), &options);
  av_dict_free(&options);
  return Check(error);
}

HRESULT Muxer::Write(int index, PacketPtr packet) {
  if (FAILED(failed_)) return failed_;
  packet->stream_index = index;
  av_packet_rescale_ts(packet.get(), timeBases_[index], format_->streams[index]->time_base);
  return Check(av_interleaved_write_frame(format_.get(), packet.get()));
}

HRESULT Muxer::Flush() {
  if (FAILED(failed_)) return failed_;
  avio_flush(file_->Io());
  return Check(0);
}

HRESULT Muxer::Finish() {
  if (FAILED(failed_)) return failed_;
  int error = av_write_trailer(format_.get());
  if (error >= 0) avio_flush(file_->Io());
  return Check(error);
}

}  // namespace tessel::platform
