#include "session.h"

#include "vorna/errorbase.h"

namespace tessel::cli {

Session::~Session() {
  if (_module) vorna::host::UnloadModule(_module);
  if (_started) vorna::host::Stop();
}

bool Session::Open(const Options& options, std::string& error) {
  vorna::host::HostOptions hostOptions{options.moduleDirectory};
  vorna::Result<void> started = vorna::host::StartWithClient(hostOptions);
  if (started.IsError()) {
    error = DescribeError(started.GetError());
    return false;
  }
  _started = true;
  vorna::host::SetOutputMask(options.log ? 7 : 6);
  for (const auto& [name, value] : options.settings) {
    if (!vorna::host::SetConfiguration(name, value)) {
      error = "cannot set " + name + " to \"" + value + "\": expected true, false, 1 or 0";
      return false;
    }
  }
  vorna::Result<vorna::host::LoadedModule*> loaded = vorna::host::LoadModule(MODULE_NAME);
  if (loaded.IsError()) {
    error = DescribeError(loaded.GetError());
    return false;
  }
  _module = loaded.GetValue();
  return true;
}

std::string DescribeError(vorna::ErrorWord error) {
  vorna::ErrorInterface object = vorna::ErrorOf(error);
  if (!object) return "unknown error";
  vorna::Result<vorna::CString> text = object.ToString(nullptr).GetCString();
  return text.IsError() ? "unknown error" : text.GetValue().GetCString();
}

}  // namespace tessel::cli
