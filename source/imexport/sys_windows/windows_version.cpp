#include "windows_version.h"

#include <windows.h>

namespace tessel {

vorna::Bool IsWindowsVersionOrGreater(vorna::UInt16 major, vorna::UInt16 minor, vorna::UInt16 servicePack) {
  OSVERSIONINFOEXW info{};
  info.dwOSVersionInfoSize = sizeof(info);
  info.dwMajorVersion = major;
  info.dwMinorVersion = minor;
  info.wServicePackMajor = servicePack;
  DWORDLONG mask = VerSetConditionMask(
      VerSetConditionMask(VerSetConditionMask(0, VER_MAJORVERSION, VER_GREATER_EQUAL), VER_MINORVERSION, VER_GREATER_EQUAL),
      VER_SERVICEPACKMAJOR, VER_GREATER_EQUAL);
  return VerifyVersionInfoW(&info, VER_MAJORVERSION | VER_MINORVERSION | VER_SERVICEPACKMAJOR, mask) != FALSE;
}

}  // namespace tessel
