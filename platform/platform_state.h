// Process-wide state of the stand-in that tests steer through tessel_platform_control.h.
#pragma once

#include <cstdint>

namespace tessel::platform {

struct WindowsVersion {
  uint32_t major;
  uint32_t minor;
  uint16_t servicePack;
};

WindowsVersion ReportedWindowsVersion();

}  // namespace tessel::platform
