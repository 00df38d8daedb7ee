// The commands of the tessel command line. Each returns the process's exit code.
#pragma once

#include "cli_options.h"

namespace tessel::cli {

int RunDemo(const Options& options);

}  // namespace tessel::cli
