#include "failure.h"

#include <cstdio>

namespace tessel::cli {

int Report(const Failure& failure) {
  std::fprintf(stderr, "tessel: %s\n", failure.message.c_str());
  if (failure.exitCode == kExitUsage) std::fprintf(stderr, "Run \"tessel help\" for the commands and their options.\n");
  return failure.exitCode;
}

}  // namespace tessel::cli
