// The containers a sink writer writes, what each holds, and how the writer picks one.
#pragma once

#include <span>
#include <string>

#include "mfobjects.h"

namespace tessel::platform {

struct SinkContainer {
  const GUID* type;                    // MF_TRANSCODE_CONTAINERTYPE value
  const char* muxer;                   // libavformat's name for it
  const char* options;                 // muxer options, "key=value" pairs split by ':'
  bool decodeTimes;                    // stores decode times beside presentation times
  std::span<const GUID* const> video;  // output subtypes the container holds
  std::span<const GUID* const> audio;
  std::span<const char* const> suffixes;
};

// What a container asks of the encoders that feed it.
struct ContainerNeeds {
  bool globalHeaders;    // codec headers go into the container, not into the stream
  bool reorderedFrames;  // pictures may come in another order than they are shown
};

// MF_TRANSCODE_CONTAINERTYPE of the attributes or, without it, the suffix of the path.
// MF_E_UNSUPPORTED_BYTESTREAM_TYPE for any other container or suffix.
HRESULT ChooseContainer(IMFAttributes* attributes, const std::string& path, const SinkContainer** container);

// Whether the container can hold a stream of that output subtype.
bool Holds(const SinkContainer& container, REFGUID subtype);

}  // namespace tessel::platform
