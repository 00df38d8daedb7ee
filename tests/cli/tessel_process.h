// Runs the built tessel binary as a child process in a directory of its own and
// collects what it printed and its exit code.
#pragma once

#include <string>
#include <vector>

namespace tessel::testing {

struct TesselRun {
  int exitCode = -1;
  std::string out;
  std::string err;
};

// Runs tessel with arguments in directory; stdout and stderr are kept apart.
TesselRun RunTessel(const std::vector<std::string>& arguments, const std::string& directory);

// The arguments that make tessel load the host's test module, which reads memory urls
// named "pattern...": 4x2 frames whose colour is the frame time in tenths of a second.
std::vector<std::string> PatternModule();

// A fresh empty directory under the system's temporary directory.
std::string MakeTempDirectory();

}  // namespace tessel::testing
