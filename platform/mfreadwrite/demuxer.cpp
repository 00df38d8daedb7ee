// Demuxer.
#include "mfreadwrite/demuxer.h"

#include <sys/stat.h>

#include "mferror.h"
#include "mfreadwrite/av_status.h"
#include "mfreadwrite/codec_log.h"

namespace tessel::platform {

namespace {

// Failed reads in a row, without a packet in between, before the file counts as ended.
constexpr int kMaxFailedReads = 32;
// A file with more streams than this is damaged.
constexpr unsigned kMaxStreams = 64;

HRESULT StatusForMissingFile(const std::string& path) {
  struct stat info;
  if (stat(path.c_str(), &info) != 0) {
    return errno == ENOENT ? HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND)
           : errno == EACCES ? E_ACCESSDENIED
                             : HRESULT_FROM_WIN32(ERROR_PATH_NOT_FOUND);
  }
  if (S_ISDIR(info.st_mode)) return E_ACCESSDENIED;
  if (info.st_size == 0) return MF_E_UNSUPPORTED_BYTESTREAM_TYPE;
  return S_OK;
}

// Whether the key frames a stream's index holds lie in the file in another order than
// their times: an index built while reading, of a file whose timestamps run backwards.
bool IndexRunsBackwards(AVStream* stream) {
  const AVIndexEntry* previous = nullptr;
  for (int i = 0; i < avformat_index_get_entries_count(stream); ++i) {
    const AVIndexEntry* entry = avformat_index_get_entry(stream, i);
    if (previous && entry->pos < previous->pos) return true;
    previous = entry;
  }
  return false;
}

}  // namespace

Demuxer::Demuxer() { TakeOverCodecLog(); }

HRESULT Demuxer::OpenFile(const std::string& path, std::unique_ptr<Demuxer>* demuxer) {
  HRESULT hr = StatusForMissingFile(path);
  if (FAILED(hr)) return hr;
  auto made = std::make_unique<Demuxer>();
  AVFormatContext* format = nullptr;
  std::string url = "file:" + path;
  int error = avformat_open_input(&format, url.c_str(), nullptr, nullptr);
  if (error < 0) return StatusFromOpenError(error);
  made->format_.reset(format);
  hr = made->FinishOpen();
  if (SUCCEEDED(hr)) *demuxer = std::move(made);
  return hr;
}

HRESULT Demuxer::OpenByteStream(IMFByteStream* stream, std::unique_ptr<Demuxer>* demuxer) {
  auto made = std::make_unique<Demuxer>();
  HRESULT hr = ByteStreamIo::Create(stream, &made->io_);
  if (FAILED(hr)) return hr;
  AVFormatContext* format = avformat_alloc_context();
  if (!format) return E_OUTOFMEMORY;
  format->pb = made->io_->Context();
  format->flags |= AVFMT_FLAG_CUSTOM_IO;
  int error = avformat_open_input(&format, nullptr, nullptr, nullptr);
  if (error < 0) return StatusFromOpenError(error);
  made->format_.reset(format);
  hr = made->FinishOpen();
  if (SUCCEEDED(hr)) *demuxer = std::move(made);
  return hr;
}

HRESULT Demuxer::FinishOpen() {
  dataStart_ = format_->pb ? avio_tell(format_->pb) : -1;
  int error = avformat_find_stream_info(format_.get(), nullptr);
  if (error < 0) return StatusFromOpenError(error);
  if (format_->nb_streams == 0) return MF_E_INVALID_FILE_FORMAT;
  if (format_->nb_streams > kMaxStreams) return MF_E_INVALID_FILE_FORMAT;
  return S_OK;
}

bool Demuxer::Seekable() const {
  if (io_) return io_->Seekable();
  return format_->pb && (format_->pb->seekable & AVIO_SEEKABLE_NORMAL);
}

int64_t Demuxer::DurationTicks() const {
  if (format_->duration != AV_NOPTS_VALUE && format_->duration > 0) {
    return av_rescale(format_->duration, kTicksPerSecond, AV_TIME_BASE);
  }
  int64_t longest = -1;
  for (unsigned i = 0; i < format_->nb_streams; ++i) {
    const AVStream* stream = format_->streams[i];
    if (stream->duration == AV_NOPTS_VALUE || stream->duration <= 0) continue;
    longest = std::max(longest, av_rescale_q(stream->duration, stream->time_base, {1, int(kTicksPerSecond)}));
  }
  return longest;
}

HRESULT Demuxer::ReadPacket(PacketPtr* packet) {
  if (ended_) return S_FALSE;
  PacketPtr made(av_packet_alloc());
  if (!made) return E_OUTOFMEMORY;
  for (int failed = 0; failed < kMaxFailedReads; ++failed) {
    int error = av_read_frame(format_.get(), made.get());
    if (error >= 0) {
      *packet = std::move(made);
      return S_OK;
    }
    if (error == AVERROR_EOF) break;
    if (error == AVERROR(ENOMEM)) return E_OUTOFMEMORY;
    if (format_->pb && format_->pb->eof_reached) break;
  }
  ended_ = true;
  return S_FALSE;
}

bool Demuxer::AnyIndexRunsBackwards() const {
  for (unsigned i = 0; i < format_->nb_streams; ++i)
    if (IndexRunsBackwards(format_->streams[i])) return true;
  return false;
}

bool Demuxer::RewindToData() {
  if (dataStart_ < 0 || (format_->iformat->flags & AVFMT_NO_BYTE_SEEK) || !Seekable()) return false;
  if (avformat_flush(format_.get()) < 0 || avio_seek(format_->pb, dataStart_, SEEK_SET) < 0) return false;
  ended_ = false;
  return true;
}

// The start can always be had by bytes where the container allows it: when its index
// runs backwards (a later packet took over the entry of an earlier time, and a seek to
// the start would land near the end), and when a seek by the index fails, as it does
// over a damaged index or none.
HRESULT Demuxer::SeekBefore(int streamIndex, int64_t ticks) {
  if (ticks <= 0 && AnyIndexRunsBackwards() && RewindToData()) return S_OK;
  int64_t target = av_rescale(ticks, AV_TIME_BASE, kTicksPerSecond);
  if (streamIndex >= 0) {
    target = av_rescale_q(ticks, {1, int(kTicksPerSecond)}, format_->streams[streamIndex]->time_base);
  }
  int error = avformat_seek_file(format_.get(), streamIndex, INT64_MIN, target, target, 0);
  if (error < 0) error = av_seek_frame(format_.get(), streamIndex, target, AVSEEK_FLAG_BACKWARD);
  if (error < 0 && ticks <= 0 && RewindToData()) return S_OK;
  if (error < 0) return StatusFromReadError(error);
  ended_ = false;
  return S_OK;
}

}  // namespace tessel::platform
