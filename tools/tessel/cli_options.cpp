#include "cli_options.h"

#include <cstdlib>

namespace tessel::cli {

namespace {

bool TakeSetting(const std::string& text, Options& options, std::string& error) {
  auto eq = text.find('=');
  if (eq == std::string::npos || eq == 0) {
    error = "--set expects NAME=VALUE, got \"" + text + "\"";
    return false;
  }
  options.settings.emplace_back(text.substr(0, eq), text.substr(eq + 1));
  return true;
}

std::string DefaultModuleDirectory() {
  const char* fromEnvironment = std::getenv("TESSEL_MODULE_DIR");
  return fromEnvironment ? fromEnvironment : TESSEL_DEFAULT_MODULE_DIR;
}

bool NeedsValue(const std::string& arg) { return arg == "--set" || arg == "--modules" || arg == "--module"; }

}  // namespace

bool ParseOptions(int argc, char** argv, Options& options, std::string& error) {
  options.moduleDirectory = DefaultModuleDirectory();
  for (int i = 1; i < argc; ++i) {
    std::string arg = argv[i];
    if (NeedsValue(arg) && i + 1 >= argc) {
      error = arg + " expects a value";
      return false;
    }
    if (arg == "--set") {
      if (!TakeSetting(argv[++i], options, error)) return false;
    } else if (arg == "--modules") {
      options.moduleDirectory = argv[++i];
    } else if (arg == "--module") {
      options.moduleNames.push_back(argv[++i]);
    } else if (arg == "--log") {
      options.log = true;
    } else if (options.command.empty() && (arg == "--help" || arg == "-h")) {
      options.command = "help";
    } else if (options.command.empty() && arg.rfind("-", 0) != 0) {
      options.command = arg;
    } else if (!options.command.empty()) {
      options.arguments.push_back(arg);
    } else {
      error = "unknown option " + arg;
      return false;
    }
  }
  return true;
}

}  // namespace tessel::cli
