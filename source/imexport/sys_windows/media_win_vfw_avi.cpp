// The AVI export through Video for Windows.
#include "vorna/translationunit.h"

#include <vfw.h>

#include "vorna/system_win.h"

namespace tessel {

namespace {

vorna::Result<void> StartAviFile() {
  VORNA_RETURN_ON_ERROR(vorna::SystemWindows::EnterComApartment(nullptr, 2));
  AVIFileInit();
  return vorna::OK;
}

void StopAviFile() {
  AVIFileExit();
  vorna::SystemWindows::LeaveComApartment();
}

}  // namespace

VORNA_INITIALIZATION_STAGE(g_aviStartup, "COM apartment and AVIFileInit", &StartAviFile, &StopAviFile);

}  // namespace tessel
