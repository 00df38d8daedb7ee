#include "terminal_chooser.h"

#include <unistd.h>

#include "compressor_prompt.h"

namespace tessel::cli {

TerminalChooser::~TerminalChooser() {
  if (_installed) TesselPlatformSetCompressorChooser(nullptr, nullptr);
  if (_ownsInput) std::fclose(_in);
}

bool TerminalChooser::Install(Failure& failure) {
  if (::isatty(STDIN_FILENO) == 1) {
    _in = stdin;
  } else {
    _in = std::fopen("/dev/tty", "re");
    _ownsInput = _in != nullptr;
  }
  if (!_in || ::isatty(::fileno(_in)) != 1) {
    failure = UsageFailure("--choose asks on a terminal, and tessel runs without one; give --compressor CODE instead");
    return false;
  }
  TesselPlatformSetCompressorChooser(&TerminalChooser::Choose, this);
  _installed = true;
  return true;
}

BOOL TerminalChooser::Choose(void* context, const TesselChooserRequest* request, TesselCompressorChoice* choice) {
  auto* self = static_cast<TerminalChooser*>(context);
  return AskForCompressor(self->_in, stderr, *request, *choice) ? TRUE : FALSE;
}

}  // namespace tessel::cli
