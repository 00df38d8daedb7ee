// Mapping of FFmpeg errors to statuses.
#include "mfreadwrite/av_status.h"

#include <cerrno>

#include "mferror.h"
#include "mfplat/errno_status.h"

extern "C" {
#include <libavutil/error.h>
}

namespace tessel::platform {

HRESULT StatusFromOpenError(int error) {
  switch (error) {
    case AVERROR(ENOENT): return HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND);
    case AVERROR(EACCES): return E_ACCESSDENIED;
    case AVERROR(ENOMEM): return E_OUTOFMEMORY;
    case AVERROR_EOF:
    case AVERROR_INVALIDDATA:
    case AVERROR_DEMUXER_NOT_FOUND: return MF_E_UNSUPPORTED_BYTESTREAM_TYPE;
    case AVERROR_DECODER_NOT_FOUND: return MF_E_TOPO_CODEC_NOT_FOUND;
    default: return MF_E_INVALID_FILE_FORMAT;
  }
}

HRESULT StatusFromReadError(int error) {
  switch (error) {
    case AVERROR(ENOMEM): return E_OUTOFMEMORY;
    case AVERROR_INVALIDDATA: return MF_E_INVALID_STREAM_DATA;
    default: return E_FAIL;
  }
}

// FFmpeg gives the system's errors as negative errno values and its own as large tags.
HRESULT StatusFromWriteError(int error) {
  constexpr int kLargestErrno = 4095;
  if (error < 0 && error >= -kLargestErrno) return StatusFromErrno(AVUNERROR(error));
  return E_FAIL;
}

}  // namespace tessel::platform
