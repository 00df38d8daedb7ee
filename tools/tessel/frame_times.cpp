#include "frame_times.h"

#include <cmath>

namespace tessel::cli {

bool StreamDuration(const FormatInfo& format, const std::string& name, double& seconds, Failure& failure) {
  if (!format.duration || !std::isfinite(*format.duration) || *format.duration <= 0) {
    failure = {kExitFailure, name + ": the video stream does not tell its length; use frames --every SECONDS"};
    return false;
  }
  seconds = *format.duration;
  return true;
}

std::vector<double> SpreadTimes(double duration, int64_t count) {
  std::vector<double> times;
  for (int64_t i = 0; i < count; ++i) times.push_back(duration * double(i) / double(count));
  return times;
}

}  // namespace tessel::cli
