// Runs the built tessel binary as a child process in a directory of its own and
// collects what it printed and its exit code.
#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <vector>

namespace tessel::testing {

struct TesselRun {
  int exitCode = -1;
  std::string out;
  std::string err;
};

// Runs tessel with arguments in directory, without a terminal: stdin is /dev/null and
// the process has no controlling terminal. stdout and stderr are kept apart.
TesselRun RunTessel(const std::vector<std::string>& arguments, const std::string& directory);

// Runs tessel as RunTessel does and sends it SIGINT as soon as ready(directory) says
// so, asked every few milliseconds; gives up after a minute.
TesselRun RunTesselAndInterrupt(const std::vector<std::string>& arguments, const std::string& directory,
                                const std::function<bool(const std::string&)>& ready);

// An answer that a user types on the terminal once the text prompt has appeared.
struct TerminalAnswer {
  std::string prompt;
  std::string answer;  // typed with Enter after it
};

// Runs tessel with a pseudo-terminal as its stdin, stdout and stderr and answers its
// questions: each answer is typed when its prompt appears after the previous one. out
// holds all that the terminal showed, answers echoed; err is empty. A tessel that
// shows nothing for a minute is killed (exit code -1).
TesselRun RunTesselOnTerminal(const std::vector<std::string>& arguments, const std::string& directory,
                              const std::vector<TerminalAnswer>& answers = {});

// The arguments that make tessel load the host's test module, which reads memory urls
// named "pattern...": 4x2 frames (WxH for "pattern-WxH...") whose colour is the frame
// time in tenths of a second; and writes ".rec" files with its recording saver.
std::vector<std::string> PatternModule();

// The arguments that make tessel load the media module and the test module, so that
// clips can be written through the recording saver.
std::vector<std::string> MediaAndTestModules();

// A fresh empty directory under the system's temporary directory.
std::string MakeTempDirectory();

// The names of the files in a run's directory, without the captured output.
std::vector<std::string> FilesWritten(const std::string& directory);

}  // namespace tessel::testing
