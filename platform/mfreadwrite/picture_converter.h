// PictureConverter: one uncompressed input frame (RGB32 or YUY2, its rows in either
// order) into the 4:2:0 YUV picture that the encoders take, with libswscale in one pass.
// RGB becomes YUV of the target's matrix in limited range. One thread at a time.
#pragma once

#include "mfreadwrite/ffmpeg_owners.h"
#include "mfreadwrite/sink_video_types.h"

namespace tessel::platform {

class PictureConverter {
 public:
  // Makes the scaler and the picture for frames of input to encode as target.
  HRESULT Prepare(const VideoInput& input, const VideoTarget& target);
  // data holds one frame as input describes it. The picture stays owned by the converter
  // and is written anew by the next call.
  HRESULT Convert(const BYTE* data, AVFrame** picture);

 private:
  HRESULT NewPicture();

  ScalerPtr scaler_;
  FramePtr picture_;
  VideoInput input_{};
};

}  // namespace tessel::platform
