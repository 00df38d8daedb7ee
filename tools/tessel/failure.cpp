#include "failure.h"

#include <cstdio>

namespace tessel::cli {

std::string SecondsText(double seconds) {
  char text[40];
  std::snprintf(text, sizeof text, "%g s", seconds);
  return text;
}

int Report(const Failure& failure) {
  std::fprintf(stderr, "tessel: %s\n", failure.message.c_str());
  if (failure.exitCode == kExitUsage) std::fprintf(stderr, "Run \"tessel help\" for the commands and their options.\n");
  return failure.exitCode;
}

}  // namespace tessel::cli
