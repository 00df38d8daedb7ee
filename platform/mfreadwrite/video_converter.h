// VideoConverter: one decoded frame into the rows of an output buffer, converted and
// scaled by libswscale in a single pass. Owned by one reader stream; one thread.
#pragma once

#include "mfreadwrite/ffmpeg_owners.h"
#include "mfreadwrite/output_format.h"

namespace tessel::platform {

class VideoConverter {
 public:
  // Writes the frame into destination, laid out as output.layout says.
  HRESULT Convert(const AVFrame& frame, const VideoOutput& output, uint8_t* destination);

 private:
  ScalerPtr scaler_;
};

}  // namespace tessel::platform
