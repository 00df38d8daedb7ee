// Compressors on FFmpeg's encoders: what each encoder is fed and how the settings of a
// compressing stream map onto it.
#pragma once

#include <memory>

#include "msvfw32/video_compressor.h"

extern "C" {
#include <libavutil/pixfmt.h>
}

namespace tessel::platform {

// How quality (0 to 10000) reaches the encoder.
enum class QualityControl {
  kNone,    // lossless or fixed
  kLambda,  // a quantiser from 31 (quality 0) to 2 (quality 10000), given as each frame's lambda
  kCrf,     // a constant rate factor from 40 (quality 0) to 12 (quality 10000)
};

// How the distance of key frames reaches the encoder.
enum class KeyFrameControl {
  kIntraOnly,             // every frame is a key frame
  kGopSize,               // the group of pictures
  kIntervalAfterMinimum,  // keyint_min + 1 frames from key frame to key frame
};

struct FfmpegCodec {
  const char* encoder;      // FFmpeg's name of the encoder
  AVPixelFormat input;      // what the encoder takes, converted from 24-bit BGR
  DWORD tag;                // biCompression of the compressed frames
  WORD bitCount;            // biBitCount of the compressed format
  int sizeStep;             // width and height must be multiples of it
  QualityControl quality;
  KeyFrameControl keyFrames;
  bool dataRate;            // the encoder holds a data rate
  const char* options;      // the encoder's own options, "name=value:name=value"
};

// What the chooser lists as the compressor's abilities.
constexpr DWORD CompressorFlags(const FfmpegCodec& codec) {
  return (codec.quality != QualityControl::kNone ? VIDCF_QUALITY : 0) | (codec.dataRate ? VIDCF_CRUNCH : 0) |
         (codec.keyFrames != KeyFrameControl::kIntraOnly ? VIDCF_TEMPORAL : 0);
}

HRESULT CreateFfmpegCompressor(const FfmpegCodec& codec, const CompressorSettings& settings,
                               std::unique_ptr<VideoCompressor>* compressor);

// The factory of one codec, for the compressor table.
template <const FfmpegCodec& codec>
HRESULT CreateFfmpeg(const CompressorSettings& settings, std::unique_ptr<VideoCompressor>* compressor) {
  return CreateFfmpegCompressor(codec, settings, compressor);
}

}  // namespace tessel::platform
