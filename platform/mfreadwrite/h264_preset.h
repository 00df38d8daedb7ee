// The libx264 preset of the sink writer's H.264 streams. "superfast" by default: on two
// cores it encodes 1080p at 30 frames per second faster than real time, with the RGB to
// YUV conversion in front of it. Benchmarks set others through the control door.
#pragma once

#include <string>

namespace tessel::platform {

std::string H264Preset();
// Null restores the default.
void SetH264Preset(const char* preset);

}  // namespace tessel::platform
