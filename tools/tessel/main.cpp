// tessel: the command line of the media module, run through the host.
#include <cstdio>
#include <cstring>

#include "cli_options.h"
#include "commands.h"

namespace {

constexpr const char* USAGE =
    "usage: tessel [--set NAME=VALUE]... [--modules DIR] [--log] COMMAND [ARGS]\n"
    "commands:\n"
    "  demo    load the module through the host and show what it registered\n";

}  // namespace

int main(int argc, char** argv) {
  tessel::cli::Options options;
  std::string error;
  if (!tessel::cli::ParseOptions(argc, argv, options, error)) {
    std::fprintf(stderr, "tessel: %s\n%s", error.c_str(), USAGE);
    return 64;
  }
  if (options.command == "demo") return tessel::cli::RunDemo(options);
  if (options.command.empty() || options.command == "help") {
    std::fputs(USAGE, options.command.empty() ? stderr : stdout);
    return options.command.empty() ? 64 : 0;
  }
  std::fprintf(stderr, "tessel: unknown command %s\n%s", options.command.c_str(), USAGE);
  return 64;
}
