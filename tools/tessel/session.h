// The host with the module loaded, for the time of one command.
#pragma once

#include <string>

#include "cli_options.h"
#include "vorna_host.h"

namespace tessel::cli {

inline constexpr const char* MODULE_NAME = "net.vorna.tessel_reel";

class Session {
 public:
  Session() = default;
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;
  ~Session();

  // Starts the host, applies the settings and loads the module. False with a message
  // in error when that fails.
  bool Open(const Options& options, std::string& error);
  vorna::host::LoadedModule* Module() const { return _module; }

 private:
  bool _started = false;
  vorna::host::LoadedModule* _module = nullptr;
};

// The text of the error behind a word: class id and message.
std::string DescribeError(vorna::ErrorWord error);

}  // namespace tessel::cli
