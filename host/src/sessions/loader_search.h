// How the host's session drivers find the loader of a url: every member of
// vorna.FileFormats is asked whether it can read the url, and among the handlers of the
// formats that said yes the one with the highest GetDependends makes the loader.
#pragma once

#include <string>
#include <vector>

#include "vorna/mediasession_converter.h"
#include "vorna/url.h"

namespace vorna::host {

struct FoundLoader {
  MediaConverter loader;               // not analysed yet
  std::vector<std::string> detected;   // the formats that claimed the url, in registry order
  std::string handler;                 // the member id of the chosen handler
};

// An IoErrorObject "No reader for ..." when no format claims the url.
Result<FoundLoader> FindLoader(const Url& url);

}  // namespace vorna::host
