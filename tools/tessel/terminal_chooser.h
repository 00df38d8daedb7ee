// The compressor chooser that tessel installs in the platform for convert --choose: the
// dialog of compressor_prompt.h on the user's terminal. Answers are read from stdin when
// it is a terminal, otherwise from /dev/tty, the process's controlling terminal; the
// list and the questions go to stderr. Installed for the lifetime of the object.
#pragma once

#include <cstdio>

#include "failure.h"
#include "tessel_platform_control.h"

namespace tessel::cli {

class TerminalChooser {
 public:
  TerminalChooser() = default;
  TerminalChooser(const TerminalChooser&) = delete;
  TerminalChooser& operator=(const TerminalChooser&) = delete;
  // Takes the chooser out of the platform again and closes /dev/tty if it opened it.
  ~TerminalChooser();

  // Finds the terminal and installs the chooser; a usage failure when the process has
  // no terminal to ask on.
  bool Install(Failure& failure);

 private:
  static BOOL Choose(void* context, const TesselChooserRequest* request, TesselCompressorChoice* choice);

  FILE* _in = nullptr;
  bool _ownsInput = false;
  bool _installed = false;
};

}  // namespace tessel::cli
