// The preset, shared by every writer of the process.
#include "mfreadwrite/h264_preset.h"

#include <mutex>

namespace tessel::platform {

namespace {

constexpr const char* kDefaultPreset = "superfast";

std::mutex g_mutex;
std::string g_preset = kDefaultPreset;

}  // namespace

std::string H264Preset() {
  std::lock_guard lock(g_mutex);
  return g_preset;
}

void SetH264Preset(const char* preset) {
  std::lock_guard lock(g_mutex);
  g_preset = preset ? preset : kDefaultPreset;
}

}  // namespace tessel::platform
