// Ctrl-C while an export runs: the first one asks the export to stop after the frame
// it is on; a second one ends the process at once, as Ctrl-C does by default.
#pragma once

#include <csignal>

namespace tessel::cli {

class InterruptWatch {
 public:
  InterruptWatch();
  InterruptWatch(const InterruptWatch&) = delete;
  InterruptWatch& operator=(const InterruptWatch&) = delete;
  // Puts the handler that was there back.
  ~InterruptWatch();

  bool Requested() const;

 private:
  struct sigaction _previous {};
};

}  // namespace tessel::cli
