// The codecs a sink writer encodes to, by output subtype, and the opening of FFmpeg's
// encoders for them.
#pragma once

#include <vector>

#include "mfobjects.h"
#include "mfreadwrite/ffmpeg_owners.h"

extern "C" {
#include <libavcodec/avcodec.h>
}

namespace tessel::platform {

struct SinkCodec {
  const GUID* subtype;
  AVMediaType type;
  const char* encoder;  // FFmpeg's encoder; null where the platform has none
};

// Null for a subtype the writer doesn't encode to.
const SinkCodec* FindSinkCodec(REFGUID subtype);

// The encoder of an output subtype: MF_E_INVALIDMEDIATYPE for a subtype the writer
// doesn't encode to, MF_E_TOPO_CODEC_NOT_FOUND when the codec has no encoder here, as on
// a system without that encoder.
HRESULT FindEncoder(REFGUID subtype, const AVCodec** encoder);

// Opens the encoder. A failure injected through the control door comes first; settings
// the encoder refuses give MF_E_INVALIDMEDIATYPE.
HRESULT OpenEncoder(AVCodecContext* context, const AVCodec* encoder, AVDictionary** options);

// Sends frame (null: the end) to an open encoder and appends the packets that came out.
HRESULT EncodeFrame(AVCodecContext* context, const AVFrame* frame, std::vector<PacketPtr>* packets);

}  // namespace tessel::platform
