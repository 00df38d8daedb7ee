#include "vorna/translationunit.h"

#include "vorna/diagnostics.h"

#include <atomic>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>

#include "vorna/configuration.h"
#include "vorna/formatstring.h"
#include "vorna/system.h"
#include "vorna/threadservices.h"

namespace vorna {

VORNA_CONFIG_BOOL(g_enableDebugBreak, true, "enable debug breaks (when debugger is attached)");

namespace {

constexpr Int LINE_BUFFER = 2048;
constexpr Int LOCATION_BUFFER = 1023;

// Start values lie in the data, so a line can be output before any initialiser ran.
std::atomic<UInt32> g_outputMask{INITIAL_OUTPUT_MASK};
std::atomic<Bool> g_firstOutputDone{false};
std::atomic<Bool> g_debuggerPresent{false};

// A tracer of this process counts as an attached debugger.
Bool DetectDebugger() {
  std::ifstream status("/proc/self/status");
  std::string line;
  while (std::getline(status, line))
    if (line.rfind("TracerPid:", 0) == 0) return std::atoi(line.c_str() + 10) != 0;
  return false;
}

void FirstOutput() {
  if (g_firstOutputDone.exchange(true)) return;
  g_debuggerPresent = DetectDebugger();
  g_outputMask = INITIAL_OUTPUT_MASK;
}

UInt32 CurrentMask() {
  UInt32 mask = g_outputMask.load();
  if ((mask & 0x20000000) && System::_record.IsResolved()) {
    mask = System::GetOutputMask();
    g_outputMask = mask;
  }
  return mask;
}

const Char* FileName(const Char* path) {
  const Char* slash = std::strrchr(path, '/');
  if (slash) return slash + 1;
  const Char* backslash = std::strrchr(path, '\\');
  return backslash ? backslash + 1 : path;
}

// The host takes lines once it serves both System and the thread services its console
// output relies on.
void Emit(const Char* line) {
  if (System::_record.IsResolved() && ThreadServices::_record.IsResolved()) {
    System::ConsoleOutput(line);
    return;
  }
  std::fputs(line, stdout);
  std::fflush(stdout);
}

}  // namespace

void DiagnosticOutput(UInt32 flags, const Char* text, Int line, const Char* file) {
  FirstOutput();
  if ((flags & CurrentMask() & 7) == 0) return;
  Char location[LOCATION_BUFFER + 1] = "";
  Bool locationInFront = g_debuggerPresent.load();
  if (flags & OUTPUT_HEADER) {
    const Char* path = file ? file : "";
    if (locationInFront)
      std::snprintf(location, sizeof(location), "%s(%d): ", path, int(line));
    else
      std::snprintf(location, sizeof(location), " [%s(%d)]", FileName(path), int(line));
  }
  const Char* prefix = (flags & OUTPUT_WARNING) ? "WARNING: " : (flags & OUTPUT_CRITICAL) ? "CRITICAL: " : "";
  const Char* end = (flags & OUTPUT_NOLINEBREAK) ? "" : "\n";
  size_t length = std::strlen(location) + std::strlen(prefix) + std::strlen(text) + std::strlen(end) + 1;
  Char buffer[LINE_BUFFER];
  Char* out = length <= sizeof(buffer) ? buffer : static_cast<Char*>(std::malloc(length));
  if (!out) return;
  if (locationInFront)
    std::snprintf(out, length, "%s%s%s%s", location, prefix, text, end);
  else
    std::snprintf(out, length, "%s%s%s%s", prefix, text, location, end);
  Emit(out);
  if (out != buffer) std::free(out);
}

void DiagnosticOutputString(UInt32 flags, String* text, Int line, const Char* file) {
  if (!text) {
    DiagnosticOutput(CRITICAL_WITH_LOCATION, "Console output failed", line, file);
    return;
  }
  Result<CString> bytes = text->GetCString();
  if (!bytes.IsError()) DiagnosticOutput(flags, bytes.GetValue().GetCString(), line, file);
  FreeFormattedString(text);
}

Bool IsDebuggerFlagSet() {
  FirstOutput();
  return g_debuggerPresent.load();
}

void SetDebuggerFlag(Bool present) {
  FirstOutput();
  g_debuggerPresent = present;
}

void ResetOutputMask() { g_outputMask = INITIAL_OUTPUT_MASK; }

void ReportAssertion(const Char* text, Int line, const Char* file) {
  DiagnosticOutput(CRITICAL_WITH_LOCATION, text, line, file);
  if (g_debuggerPresent.load() && g_enableDebugBreak) std::raise(SIGTRAP);
}

}  // namespace vorna
