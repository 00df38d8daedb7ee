// Frames of one video stream of a media file by time, kept by an image sink in
// vorna.PixelFormats.RGBA:u8. The frame, frames and sheet commands share it.
#pragma once

#include <memory>

#include "failure.h"
#include "media_file.h"
#include "stream_info.h"
#include "vorna_sinks.h"

namespace tessel::cli {

struct FrameRequest {
  int64_t videoStream = 0;  // counts the video streams only, from 0
  bool squarePixels = false;
};

class FrameGrabber {
 public:
  // Subscribes the video stream to its native format (key 1) or, with squarePixels, to
  // the square-pixel one (key -1). A stream whose pixels are square has no such
  // format; it is delivered as it is.
  bool Open(MediaFile& file, const FrameRequest& request, Failure& failure);

  // The frame for seconds. Delivery is forced, so that two times on the same frame give
  // it twice. Past the end: kExitPastEnd.
  bool Grab(double seconds, vorna::host::ImageFrame& frame, Failure& failure);

  const FormatInfo& Format() const { return _format; }

 private:
  MediaFile* _file = nullptr;
  std::shared_ptr<vorna::host::ImageSink> _sink;
  FormatInfo _format;
};

}  // namespace tessel::cli
