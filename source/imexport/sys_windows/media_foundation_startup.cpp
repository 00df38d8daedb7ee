#include "media_foundation_startup.h"

#include <mfapi.h>

#include "vorna/system_win.h"
#include "vorna/win_com.h"

namespace tessel {

vorna::Result<void> StartMediaFoundation() {
  VORNA_RETURN_ON_ERROR(vorna::SystemWindows::EnterComApartment(nullptr, 2));
  vorna::Result<void> started = vorna::CheckHResult(MFStartup(MF_VERSION, MFSTARTUP_FULL));
  if (started.IsError()) vorna::SystemWindows::LeaveComApartment();
  return started;
}

void StopMediaFoundation() {
  MFShutdown();
  vorna::SystemWindows::LeaveComApartment();
}

}  // namespace tessel
