// How a command fails: an exit code that tells the kind of failure, and a message for
// stderr. The codes are listed in the usage text and the README.
#pragma once

#include <string>

namespace tessel::cli {

enum ExitCode : int {
  kExitOk = 0,
  kExitFailure = 1,          // any failure not listed below, such as an output that cannot be written
  kExitMissingFile = 2,      // the input file does not exist
  kExitNoReader = 3,         // no registered file format reads the file
  kExitPastEnd = 4,          // the time asked for lies past the end of the stream
  kExitNoModule = 5,         // the host did not start or the module did not load
  kExitRefused = 6,          // the saver refused the export: a setting, the frame size, the streams
  kExitChoiceCancelled = 7,  // the user cancelled the compressor choice of convert --choose
  kExitUsage = 64,           // the command line is wrong
  kExitCancelled = 130,      // the export was stopped with Ctrl-C
};

struct Failure {
  int exitCode = kExitFailure;
  std::string message;
};

inline Failure UsageFailure(std::string message) { return {kExitUsage, std::move(message)}; }

// A time for messages: "1.5 s".
std::string SecondsText(double seconds);

// Prints "tessel: MESSAGE" on stderr and gives the failure's exit code.
int Report(const Failure& failure);

}  // namespace tessel::cli
