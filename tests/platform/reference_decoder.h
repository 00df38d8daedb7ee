// FFmpeg's own decode and conversion of one frame, the reference the reader's output
// is compared with.
#pragma once

#include <string>
#include <vector>

extern "C" {
#include <libavutil/pixfmt.h>
}

namespace tessel::platform_test {

// Frame `index` (in presentation order) of the first video stream of path, converted to
// format at width x height with rows pitch bytes apart, top row first. Empty on failure.
std::vector<uint8_t> ReferenceFrame(const std::string& path, int index, AVPixelFormat format, int width, int height,
                                    int pitch);

// The peak signal-to-noise ratio in dB of two images of the same layout; large when
// they are equal.
double Psnr(const std::vector<uint8_t>& a, const std::vector<uint8_t>& b);

}  // namespace tessel::platform_test
