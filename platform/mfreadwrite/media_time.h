// Media time in 100 ns ticks against the units of a stream's time base.
#pragma once

#include "mfreadwrite/av_status.h"

extern "C" {
#include <libavutil/mathematics.h>
}

namespace tessel::platform {

// The count of units nearest to ticks.
inline int64_t NearestUnits(int64_t ticks, AVRational unit) {
  return av_rescale_q_rnd(ticks, {1, int(kTicksPerSecond)}, unit, AVRounding(AV_ROUND_NEAR_INF | AV_ROUND_PASS_MINMAX));
}

inline int64_t UnitsToTicks(int64_t count, AVRational unit) {
  return av_rescale_q(count, unit, {1, int(kTicksPerSecond)});
}

}  // namespace tessel::platform
