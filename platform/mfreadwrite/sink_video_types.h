// The media types of a sink writer's video stream: the target type that AddStream takes
// (what the file holds) and the uncompressed input type that SetInputMediaType takes.
#pragma once

#include "mfobjects.h"

extern "C" {
#include <libavutil/pixfmt.h>
#include <libavutil/rational.h>
}

namespace tessel::platform {

struct VideoTarget {
  GUID subtype;
  int width;
  int height;
  AVRational frameRate;    // frames per second, exactly as the type gives it
  AVRational pixelAspect;  // 1:1 when the type gives none
  int64_t bitRate;         // average, bits per second
  int keyFrameSpacing;     // largest distance between key frames; 0 leaves it to the writer
  int profile;             // eAVEncH264VProfile; 0 leaves it to the encoder
  int level;               // H.264 level times ten; 0 leaves it to the encoder
};

// MF_E_INVALIDMEDIATYPE for a type without frame size, frame rate or average bit rate,
// with an odd or absurd frame size, fields, or an H.264 profile or level that the
// encoder doesn't offer.
HRESULT ReadVideoTarget(IMFMediaType* type, VideoTarget* target);

// The matrix of the YUV pictures that are encoded: BT.709 for H.264 of 720 lines or
// more, BT.601 below, and BT.601 for the WMV codecs, whose streams can't name a matrix
// and whose decoders assume that one.
AVColorSpace YuvMatrix(const VideoTarget& target);

struct VideoInput {
  // AV_PIX_FMT_BGRA for RGB32 (its fourth byte goes nowhere: the pictures have no alpha,
  // and the scaler reads this layout fastest), AV_PIX_FMT_YUYV422 for YUY2.
  AVPixelFormat format;
  int pitch;             // bytes from one row to the next in memory
  bool bottomUp;         // memory holds the last picture row first
  size_t frameBytes;
};

// MF_E_INVALIDMEDIATYPE for another subtype, or a frame size, rate or pixel aspect that
// differs from the target's.
HRESULT ReadVideoInput(IMFMediaType* type, const VideoTarget& target, VideoInput* input);

}  // namespace tessel::platform
