// The uncompressed outputs a source reader stream accepts, and the current media type
// that describes an accepted one.
//
// Without video processing a video stream gives the decoder's YUV outputs (YUY2, YVYU)
// at its own size. Video processing adds the conversion to RGB32. Advanced video
// processing converts to every output (RGB32, ARGB32, RGB24, RGB555, RGB565, YUY2,
// YVYU) and scales to any frame size. Audio is given as PCM (8, 16, 24 or 32 bits) or
// Float at any rate and channel count.
#pragma once

#include "mfobjects.h"
#include "mfplat/buffers.h"

extern "C" {
#include <libavutil/pixfmt.h>
#include <libavutil/samplefmt.h>
}

namespace tessel::platform {

enum class VideoProcessing { kNone, kBasic, kAdvanced };

struct VideoOutput {
  GUID subtype;
  AVPixelFormat pixelFormat;
  UINT32 aspectNumerator;
  UINT32 aspectDenominator;
  ImageLayout layout;  // width, height, pitch and size of one frame
};

struct AudioOutput {
  GUID subtype;
  AVSampleFormat sampleFormat;
  UINT32 rate;
  UINT32 channels;
  UINT32 bits;
};

// MF_E_INVALIDMEDIATYPE for a subtype, size or processing the stream can't give.
HRESULT AcceptVideoOutput(IMFMediaType* wanted, IMFMediaType* native, VideoProcessing processing,
                          VideoOutput* output);
HRESULT AcceptAudioOutput(IMFMediaType* wanted, IMFMediaType* native, AudioOutput* output);

// The current type of a stream with that output; video keeps the native frame rate and
// rotation and states the default stride (positive: rows are top-down).
HRESULT CreateVideoCurrentType(const VideoOutput& output, IMFMediaType* native, IMFMediaType** type);
HRESULT CreateAudioCurrentType(const AudioOutput& output, IMFMediaType** type);

}  // namespace tessel::platform
