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
  const char* encoder;  // FFmpeg's encoder; null for WMV3, which has the platform's own
};

// Null for a subtype the writer doesn't encode to.
const SinkCodec* FindSinkCodec(REFGUID subtype);

// FFmpeg's encoder of an output subtype: MF_E_INVALIDMEDIATYPE for a subtype the writer
// doesn't encode to, MF_E_TOPO_CODEC_NOT_FOUND when FFmpeg has no encoder for it (WMV3,
// whose encoder is the platform's own, or an FFmpeg built without one).
HRESULT FindEncoder(REFGUID subtype, const AVCodec** encoder);

// Whether the writer has an encoder for the subtype, its own or FFmpeg's; the statuses
// of FindEncoder.
HRESULT CheckEncoder(REFGUID subtype);

// The failure that the control door set for the next opening of an encoder, taken
// once; S_OK when none is set.
HRESULT TakeInjectedOpenFailure();

// Opens the encoder. A failure injected through the control door comes first; settings
// the encoder refuses give MF_E_INVALIDMEDIATYPE.
HRESULT OpenEncoder(AVCodecContext* context, const AVCodec* encoder, AVDictionary** options);

// Sends frame (null: the end) to an open encoder and appends the packets that came out.
HRESULT EncodeFrame(AVCodecContext* context, const AVFrame* frame, std::vector<PacketPtr>* packets);

}  // namespace tessel::platform
