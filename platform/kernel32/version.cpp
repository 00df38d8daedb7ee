// VerSetConditionMask and VerifyVersionInfoW against the version the stand-in reports.
#include <atomic>

#include "platform_state.h"
#include "windows.h"

namespace {

// The condition of one type bit: three bits per bit index, as the platform packs them.
int ConditionFor(DWORDLONG conditionMask, DWORD typeBit) {
  int index = __builtin_ctz(typeBit);
  return static_cast<int>((conditionMask >> (index * 3)) & 7);
}

bool Compare(int64_t have, int64_t want, int condition) {
  switch (condition) {
    case VER_EQUAL: return have == want;
    case VER_GREATER: return have > want;
    case VER_GREATER_EQUAL: return have >= want;
    case VER_LESS: return have < want;
    case VER_LESS_EQUAL: return have <= want;
    default: return false;
  }
}

}  // namespace

extern "C" ULONGLONG WINAPI VerSetConditionMask(ULONGLONG conditionMask, DWORD typeMask, BYTE condition) {
  for (DWORD bit = 1; bit <= VER_SERVICEPACKMAJOR; bit <<= 1) {
    if (typeMask & bit) {
      int index = __builtin_ctz(bit);
      conditionMask &= ~(ULONGLONG(7) << (index * 3));
      conditionMask |= ULONGLONG(condition & 7) << (index * 3);
    }
  }
  return conditionMask;
}

// Major, minor and service pack are compared as one number, most significant first,
// as the platform does when they are asked together under the same condition.
extern "C" BOOL WINAPI VerifyVersionInfoW(LPOSVERSIONINFOEXW info, DWORD typeMask, DWORDLONG conditionMask) {
  if (!info || info->dwOSVersionInfoSize != sizeof(OSVERSIONINFOEXW) || typeMask == 0) {
    SetLastError(87);  // ERROR_INVALID_PARAMETER
    return FALSE;
  }
  tessel::platform::WindowsVersion v = tessel::platform::ReportedWindowsVersion();
  const DWORD parts[] = {VER_MAJORVERSION, VER_MINORVERSION, VER_SERVICEPACKMAJOR};
  const int64_t have[] = {v.major, v.minor, v.servicePack};
  const int64_t want[] = {info->dwMajorVersion, info->dwMinorVersion, info->wServicePackMajor};
  int64_t haveKey = 0;
  int64_t wantKey = 0;
  int condition = 0;
  for (int i = 0; i < 3; ++i) {
    if (!(typeMask & parts[i])) continue;
    haveKey = haveKey * 65536 + have[i];
    wantKey = wantKey * 65536 + want[i];
    if (condition == 0) condition = ConditionFor(conditionMask, parts[i]);
  }
  if (condition == 0 || Compare(haveKey, wantKey, condition)) return TRUE;
  SetLastError(ERROR_OLD_WIN_VERSION);
  return FALSE;
}
