// The line that shows how an export gets on while it runs, rewritten in place on a
// terminal: frames written (of all, when the end is known), seconds of movie, speed as
// a multiple of real time, and the time left.
#pragma once

#include <chrono>
#include <string>

#include "vorna_export.h"

namespace tessel::cli {

// "frame 120/300  4.80 s  2.41x  7 s left"; without a known end "frame 120  4.80 s  2.41x".
std::string ProgressText(const vorna::host::ExportProgress& progress, double elapsedSeconds);

class ProgressLine {
 public:
  // Shows nothing unless stderr is a terminal.
  ProgressLine();
  // Rewrites the line, at most ten times a second and always for the last frame.
  void Update(const vorna::host::ExportProgress& progress);
  // Ends the line, if one was shown.
  void Finish();
  double ElapsedSeconds() const;

 private:
  bool _show;
  bool _shown = false;
  std::chrono::steady_clock::time_point _start;
  std::chrono::steady_clock::time_point _last;
};

}  // namespace tessel::cli
