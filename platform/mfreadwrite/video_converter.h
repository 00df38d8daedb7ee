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
  // What a scaler was made for; a frame or output of another shape needs a new one.
  struct Shape {
    int sourceWidth, sourceHeight, sourceFormat, width, height, format;
    bool operator==(const Shape&) const = default;
  };

  // Gives the scaler the frame's matrix and range when they or the scaler changed.
  void MatchColorspace(const AVFrame& frame, bool newScaler);

  ScalerPtr scaler_;
  Shape shape_{};
  AVColorSpace colorspace_ = AVCOL_SPC_UNSPECIFIED;
  AVColorRange range_ = AVCOL_RANGE_UNSPECIFIED;
};

}  // namespace tessel::platform
