#include "interrupt_watch.h"

namespace tessel::cli {

namespace {

volatile std::sig_atomic_t g_requested = 0;

void OnInterrupt(int) { g_requested = 1; }

}  // namespace

InterruptWatch::InterruptWatch() {
  g_requested = 0;
  struct sigaction action {};
  action.sa_handler = &OnInterrupt;
  action.sa_flags = SA_RESETHAND;
  sigemptyset(&action.sa_mask);
  sigaction(SIGINT, &action, &_previous);
}

InterruptWatch::~InterruptWatch() { sigaction(SIGINT, &_previous, nullptr); }

bool InterruptWatch::Requested() const { return g_requested != 0; }

}  // namespace tessel::cli
