// The command line's global options: --set NAME=VALUE (any number), --log, and the
// hidden --modules DIR and --module NAME (any number) that tests use to load other
// modules. They may stand before or after the command; everything else after the
// command is the command's own.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace tessel::cli {

struct Options {
  std::vector<std::pair<std::string, std::string>> settings;
  std::string moduleDirectory;
  std::vector<std::string> moduleNames;  // empty: the media module
  bool log = false;
  std::string command;
  std::vector<std::string> arguments;
};

// False with a message in error when the line cannot be read.
bool ParseOptions(int argc, char** argv, Options& options, std::string& error);

}  // namespace tessel::cli
