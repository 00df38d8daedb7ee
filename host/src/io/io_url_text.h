// The texts of a url as the io handlers use them: UTF-8 in a std::string.
#pragma once

#include <string>

#include "vorna/url.h"

namespace vorna::host {

// The path behind "scheme://"; for a file url the platform's path. Read from the url's
// own block by the url provider, so that no failed allocation can cut it short.
std::string UrlPathText(const Url& url);

}  // namespace vorna::host
