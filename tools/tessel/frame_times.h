// The times at which the frames, frames --count and sheet commands take frames.
#pragma once

#include <string>
#include <vector>

#include "failure.h"
#include "stream_info.h"

namespace tessel::cli {

// The length of the stream whose format this is; a failure when the format has none.
bool StreamDuration(const FormatInfo& format, const std::string& name, double& seconds, Failure& failure);

// count times spread evenly over [0, duration): the first at 0, each at i * duration / count.
std::vector<double> SpreadTimes(double duration, int64_t count);

}  // namespace tessel::cli
