// The host with the module loaded, for the time of one command. The module's console
// lines go to stderr, so that stdout carries only what the command prints.
#pragma once

#include <string>
#include <vector>

#include "cli_options.h"
#include "host_text.h"
#include "failure.h"
#include "vorna_host.h"

namespace tessel::cli {

inline constexpr const char* MODULE_NAME = "net.vorna.tessel_reel";

class Session {
 public:
  Session() = default;
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;
  ~Session();

  // Starts the host, applies the settings and loads the modules (options.moduleNames,
  // or the media module). False with a failure when that fails.
  bool Open(const Options& options, Failure& failure);
  const std::vector<vorna::host::LoadedModule*>& Modules() const { return _modules; }

 private:
  bool _started = false;
  std::vector<vorna::host::LoadedModule*> _modules;  // in the order loaded
};

// The modules a command line loads: its --module names, or the media module.
std::vector<std::string> ModuleNames(const Options& options);

}  // namespace tessel::cli
