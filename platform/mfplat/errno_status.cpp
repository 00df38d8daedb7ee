// StatusFromErrno: each errno value as the Win32 error the platform gives for the same
// condition, wrapped in an HRESULT.
#include "mfplat/errno_status.h"

#include <cerrno>

namespace tessel::platform {

HRESULT StatusFromErrno(int error) {
  switch (error) {
    case ENOENT: return HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND);
    case ENOTDIR: return HRESULT_FROM_WIN32(ERROR_PATH_NOT_FOUND);
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR: return E_ACCESSDENIED;
    case EEXIST: return HRESULT_FROM_WIN32(ERROR_FILE_EXISTS);
    case ENOSPC:
    case EDQUOT: return HRESULT_FROM_WIN32(ERROR_DISK_FULL);
    case ENAMETOOLONG: return HRESULT_FROM_WIN32(ERROR_FILENAME_EXCED_RANGE);
    case EIO: return HRESULT_FROM_WIN32(ERROR_WRITE_FAULT);
    case ENOMEM: return E_OUTOFMEMORY;
    default: return E_FAIL;
  }
}

}  // namespace tessel::platform
