// The native (compressed) media type of a container stream, as the platform's media
// source describes it.
#pragma once

#include "mfobjects.h"

extern "C" {
#include <libavformat/avformat.h>
}

namespace tessel::platform {

// The clockwise turn (0, 90, 180 or 270) that shows the stream's frames upright, from
// its display matrix; the turn FFmpeg's own auto-rotation applies.
UINT32 RotationOf(const AVStream& stream);

// The frame rate of a video stream as a ratio; 0/1 when the container gives none.
AVRational FrameRateOf(const AVStream& stream);

// A new media type for the stream; streams that are neither video nor audio are
// described as MFMediaType_Binary.
HRESULT CreateNativeType(const AVStream& stream, IMFMediaType** type);

}  // namespace tessel::platform
