// Diagnostic output: works before the host is reached and while tables are filled. A
// line goes to System::ConsoleOutput once the host serves it, before that to standard
// output. Flags: bit 0 plain, bit 1 warning ("WARNING: "), bit 2 critical ("CRITICAL: "),
// bit 29 no line end, bit 30 with the source location. The output mask lets levels
// through (bits 0-2); bit 29 marks its initial value, which is replaced by the host's
// mask as soon as the host can give it.
#pragma once

#include "vorna/apibase.h"

namespace vorna {

class String;

inline constexpr UInt32 OUTPUT_DIAGNOSTIC = 0x1;
inline constexpr UInt32 OUTPUT_WARNING = 0x2;
inline constexpr UInt32 OUTPUT_CRITICAL = 0x4;
inline constexpr UInt32 OUTPUT_NOLINEBREAK = 0x20000000;
inline constexpr UInt32 OUTPUT_HEADER = 0x40000000;
inline constexpr UInt32 CRITICAL_WITH_LOCATION = OUTPUT_HEADER | OUTPUT_CRITICAL;
inline constexpr UInt32 INITIAL_OUTPUT_MASK = 0x20000007;

void DiagnosticOutput(UInt32 flags, const Char* text, Int line, const Char* file);

// The same for a text from FormatString; takes over the block, which may be null.
void DiagnosticOutputString(UInt32 flags, String* text, Int line, const Char* file);

// The debugger flag as the output routine sees it: set at the first output.
Bool IsDebuggerFlagSet();
// Overrides the debugger flag (the first output would otherwise set it).
void SetDebuggerFlag(Bool present);
// Forgets the mask taken from the host, so the next output asks again.
void ResetOutputMask();

extern Bool g_enableDebugBreak;

// Reports a failed assertion or a stop at the critical level with its location, and
// breaks into an attached debugger when debug breaks are on. The code goes on.
void ReportAssertion(const Char* text, Int line, const Char* file);

}  // namespace vorna

#define VORNA_ASSERT(condition)                                                              \
  do {                                                                                       \
    if (!(condition)) ::vorna::ReportAssertion("Assertion failed: " #condition, __LINE__, __FILE__); \
  } while (0)

#define VORNA_STOP(text) ::vorna::ReportAssertion("Stop: " text, __LINE__, __FILE__)
