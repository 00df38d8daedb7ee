// What every AVI stream of the platform answers alike.
#include "avifil32/write_only_stream.h"

#include <algorithm>
#include <cstring>

namespace tessel::platform {

HRESULT WriteOnlyStream::CopyFormat(const std::vector<uint8_t>& format, LPVOID buffer, LONG* size) {
  if (!size) return AVIERR_BADPARAM;
  if (format.empty()) return AVIERR_NODATA;
  if (buffer) std::memcpy(buffer, format.data(), std::min<size_t>(format.size(), size_t(std::max<LONG>(*size, 0))));
  *size = static_cast<LONG>(format.size());
  return S_OK;
}

HRESULT WriteOnlyStream::CopyInfo(const AVISTREAMINFOW& info, AVISTREAMINFOW* buffer, LONG size) {
  if (!buffer || size < 0) return AVIERR_BADPARAM;
  std::memcpy(buffer, &info, std::min<size_t>(sizeof(info), size_t(size)));
  return S_OK;
}

}  // namespace tessel::platform
