#include "session.h"

#include <cstdio>

#include "tessel_platform_control.h"

namespace tessel::cli {

namespace {

void PrintToStderr(const char* line) { std::fputs(line, stderr); }

// The host keeps a value for a name it hasn't seen registered yet, so a misspelt name
// is only caught once the module has registered its variables.
bool IsRegistered(const std::string& name) {
  for (const vorna::host::ConfigurationInfo& variable : vorna::host::ListConfiguration())
    if (variable.name == name) return true;
  return false;
}

}  // namespace

std::vector<std::string> ModuleNames(const Options& options) {
  return options.moduleNames.empty() ? std::vector<std::string>{MODULE_NAME} : options.moduleNames;
}

Session::~Session() {
  for (auto module = _modules.rbegin(); module != _modules.rend(); ++module) vorna::host::UnloadModule(*module);
  if (_started) vorna::host::Stop();
  vorna::host::SetConsoleSink(nullptr);
}

bool Session::Open(const Options& options, Failure& failure) {
  vorna::host::SetConsoleSink(&PrintToStderr);
  vorna::host::HostOptions hostOptions{options.moduleDirectory};
  vorna::Result<void> started = vorna::host::StartWithClient(hostOptions);
  if (started.IsError()) {
    failure = {kExitNoModule, "the host did not start: " + DescribeError(started.GetError())};
    return false;
  }
  _started = true;
  vorna::host::SetOutputMask(options.log ? 7 : 6);
  // With the module's diagnostics come the codec library's lines about damaged input.
  TesselPlatformShowCodecLog(options.log ? TRUE : FALSE);
  for (const auto& [name, value] : options.settings) {
    if (!vorna::host::SetConfiguration(name, value)) {
      failure = UsageFailure("cannot set " + name + " to \"" + value + "\": expected true, false, 1 or 0");
      return false;
    }
  }
  for (const std::string& name : ModuleNames(options)) {
    vorna::Result<vorna::host::LoadedModule*> loaded = vorna::host::LoadModule(name);
    if (loaded.IsError()) {
      failure = {kExitNoModule, "cannot load " + name + " from " + options.moduleDirectory + ": " +
                                    DescribeError(loaded.GetError())};
      return false;
    }
    _modules.push_back(loaded.GetValue());
  }
  for (const auto& setting : options.settings) {
    if (!IsRegistered(setting.first)) {
      failure = UsageFailure("no configuration variable is named " + setting.first + " (tessel demo lists them)");
      return false;
    }
  }
  return true;
}

}  // namespace tessel::cli
