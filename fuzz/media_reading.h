// A url read through the host's reading session the way a player reads a file: every
// stream subscribed, then frames at a few times, the first and the last frame, and the
// sound, which comes whole with the first Execute. Every answer must be a success or a
// clear error; the sanitizers watch everything else.
#pragma once

#include <fuzzer/FuzzedDataProvider.h>

#include <vector>

#include "vorna/url.h"

namespace tessel::fuzz {

struct ReadPlan {
  std::vector<double> seconds;  // times asked for besides the first and the last frame
  bool squarePixels = false;    // the square-pixel format of a video stream, where it has one
  bool force = false;           // every Execute asks for delivery even of the frame on show
};

// Takes the plan from the end of the fuzzer's bytes; what remains is the media.
ReadPlan TakeReadPlan(FuzzedDataProvider& data);

void ReadMedia(const vorna::Url& url, const ReadPlan& plan);

}  // namespace tessel::fuzz
