// The texts of a url as the io handlers use them: UTF-8 in a std::string.
#pragma once

#include <string>

#include "vorna/url.h"

namespace vorna::host {

// The path behind "scheme://"; for a file url the platform's path.
inline std::string UrlPathText(const Url& url) {
  Result<CString> bytes = url.GetPath().GetCString();
  return bytes.IsError() ? std::string() : std::string(bytes.GetValue().GetCString(), size_t(bytes.GetValue().GetLength()));
}

}  // namespace vorna::host
