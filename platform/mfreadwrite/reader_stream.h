// ReaderStream: one container stream of a source reader: its types, its selection, its
// queue of demuxed packets and, once an uncompressed output is set, its decoder and
// converter. Owned by the reader and used under its lock.
#pragma once

#include <cstdint>
#include <deque>
#include <memory>

#include "com.h"
#include "mfplat/buffers.h"
#include "mfreadwrite/audio_converter.h"
#include "mfreadwrite/ffmpeg_owners.h"
#include "mfreadwrite/output_format.h"
#include "mfreadwrite/video_converter.h"

namespace tessel::platform {

// What one step of a stream gave.
enum class Pulled { kSample, kNeedInput, kEnded };

class ReaderStream {
 public:
  ReaderStream(AVStream* stream, ComPtr<IMFMediaType> native);

  AVStream* Stream() const { return stream_; }
  bool IsVideo() const { return stream_->codecpar->codec_type == AVMEDIA_TYPE_VIDEO; }
  bool IsAudio() const { return stream_->codecpar->codec_type == AVMEDIA_TYPE_AUDIO; }
  IMFMediaType* NativeType() const { return native_.Get(); }
  IMFMediaType* CurrentType() const { return current_.Get(); }
  bool selected = false;
  bool endReported = false;

  // Takes an uncompressed output (with a decoder) or the native type (packets as they
  // are). MF_E_INVALIDMEDIATYPE for anything else, MF_E_TOPO_CODEC_NOT_FOUND when no
  // decoder exists for the codec.
  HRESULT SetOutput(IMFMediaType* wanted, VideoProcessing processing);

  // Packets demuxed for this stream and not yet decoded, each with its place in the file.
  void Queue(PacketPtr packet, uint64_t order);
  bool HasQueued() const { return !queue_.empty(); }
  uint64_t FirstQueuedOrder() const { return queue_.front().order; }
  const AVPacket& FirstQueued() const { return *queue_.front().packet; }
  size_t QueuedBytes() const { return queuedBytes_; }

  // Gives the next queued packet to the decoder, or the end of input with none.
  HRESULT FeedQueued();
  HRESULT FeedEnd();
  // One output of the stream, without reading the file.
  HRESULT Pull(Pulled* result, IMFSample** sample);
  // Forgets queued packets and decoder state, after a seek.
  void Reset();

 private:
  struct QueuedPacket {
    PacketPtr packet;
    uint64_t order;
  };
  enum class Mode { kPackets, kVideo, kAudio };

  HRESULT OpenDecoder();
  HRESULT Feed(const AVPacket* packet);
  HRESULT PullPacket(Pulled* result, IMFSample** sample);
  HRESULT PullDecoded(Pulled* result, IMFSample** sample);
  HRESULT MakeVideoSample(IMFSample** sample);
  HRESULT MakeAudioSample(const AVFrame* frame, IMFSample** sample);
  int64_t Ticks(int64_t timestamp) const;

  AVStream* stream_;
  ComPtr<IMFMediaType> native_;
  ComPtr<IMFMediaType> current_;
  Mode mode_ = Mode::kPackets;
  VideoOutput video_{};
  AudioOutput audio_{};
  CodecContextPtr decoder_;
  FramePtr frame_;
  VideoConverter videoConverter_;
  AudioConverter audioConverter_;
  std::shared_ptr<BlockPool> pool_;
  std::deque<QueuedPacket> queue_;
  size_t queuedBytes_ = 0;
  PacketPtr pending_;  // the packet given out next in packet mode
  bool inputEnded_ = false;
  bool decoderEnded_ = false;
  int failedPackets_ = 0;
  int64_t nextTicks_ = 0;  // the time of the next output when the decoder gives none
};

}  // namespace tessel::platform
