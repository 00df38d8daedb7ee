// AudioConverter: decoded sound into interleaved PCM or Float of the output's rate and
// channel count, with libswresample. Owned by one reader stream; one thread.
#pragma once

#include "com.h"
#include "mfreadwrite/ffmpeg_owners.h"
#include "mfreadwrite/output_format.h"

namespace tessel::platform {

class AudioConverter {
 public:
  AudioConverter() = default;
  ~AudioConverter() { av_channel_layout_uninit(&inputLayout_); }
  AudioConverter(const AudioConverter&) = delete;
  AudioConverter& operator=(const AudioConverter&) = delete;

  // Converts frame, or with a null frame the sound the resampler still holds, into a
  // new buffer. The buffer is null when nothing came out; frames gives the count.
  HRESULT Convert(const AVFrame* frame, const AudioOutput& output, IMFMediaBuffer** buffer, int* frames);
  // Drops what the resampler holds, after a seek.
  void Reset() { resampler_.reset(); }

 private:
  HRESULT Prepare(const AVFrame& frame, const AudioOutput& output);

  ResamplerPtr resampler_;
  AVChannelLayout inputLayout_{};
  int inputRate_ = 0;
  int inputFormat_ = -1;
};

}  // namespace tessel::platform
