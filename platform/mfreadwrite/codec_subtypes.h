// The platform's subtype GUID for an FFmpeg codec.
#pragma once

#include "guiddef.h"

extern "C" {
#include <libavcodec/codec_par.h>
}

namespace tessel::platform {

// The subtype of a compressed or PCM stream: the codec's own subtype where the platform
// names one, else a subtype made from the stream's four-character code or wave tag.
GUID SubtypeForCodec(const AVCodecParameters& codec);

}  // namespace tessel::platform
