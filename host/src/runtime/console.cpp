#include "runtime/console.h"

#include <atomic>
#include <cstdio>
#include <mutex>

#include "vorna_host.h"

namespace vorna::host {

namespace {
std::mutex g_mutex;
std::function<void(const char*)> g_sink;
std::atomic<UInt32> g_mask{7};
}  // namespace

// Lines of different threads do not interleave within a line.
void ConsoleOutput(const Char* line) {
  std::lock_guard lock(g_mutex);
  if (g_sink) {
    g_sink(line);
  } else {
    std::fputs(line, stdout);
    std::fflush(stdout);
  }
}

UInt32 GetOutputMask() { return g_mask.load(); }

void SetConsoleSink(std::function<void(const char* line)> sink) {
  std::lock_guard lock(g_mutex);
  g_sink = std::move(sink);
}

void SetOutputMask(UInt32 mask) { g_mask = mask & 7; }

}  // namespace vorna::host
