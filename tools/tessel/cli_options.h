// The command line's global options, taken before the command: --set NAME=VALUE (any
// number), --modules DIR, --log.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace tessel::cli {

struct Options {
  std::vector<std::pair<std::string, std::string>> settings;
  std::string moduleDirectory;
  bool log = false;
  std::string command;
  std::vector<std::string> arguments;
};

// False with a message in error when the line cannot be read.
bool ParseOptions(int argc, char** argv, Options& options, std::string& error);

}  // namespace tessel::cli
