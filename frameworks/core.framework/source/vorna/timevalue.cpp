#include "vorna/timevalue.h"

#include <cmath>

#include "vorna/formatstatement.h"

namespace vorna {

namespace {

struct UnitChoice {
  Float64 value;
  const Char* unit;
};

// What the "timer" value may start with, in the order they are tried.
enum class TimerUnit { NONE, MINUTES, MINUTES_SECONDS, SECONDS, NANOSECONDS, MICROSECONDS, MILLISECONDS, PER_SECOND };

struct TimerUnitText {
  const Char* letters;
  TimerUnit unit;
};

constexpr TimerUnitText TIMER_UNITS[] = {
    {"min", TimerUnit::MINUTES},     {"m_s", TimerUnit::MINUTES_SECONDS}, {"s", TimerUnit::SECONDS},
    {"ns", TimerUnit::NANOSECONDS},  {"us", TimerUnit::MICROSECONDS},     {"ms", TimerUnit::MILLISECONDS},
    {"ps", TimerUnit::PER_SECOND},
};

Char LowerAscii(Char c) { return c >= 'A' && c <= 'Z' ? Char(c - 'A' + 'a') : c; }

Bool StartsWith(const Char* text, const Char* letters) {
  for (; *letters; ++text, ++letters)
    if (LowerAscii(*text) != *letters) return false;
  return true;
}

// The unit that text starts with; its letters and as many bytes again plus one are cut
// from text, leaving the number format.
TimerUnit TakeTimerUnit(CString& text) {
  for (const TimerUnitText& candidate : TIMER_UNITS) {
    if (!StartsWith(text.GetCString(), candidate.letters)) continue;
    const Int letters = Id::LengthOf(candidate.letters);
    if (!text.Erase(0, 2 * letters + 1)) text.Reset();
    return candidate.unit;
  }
  return TimerUnit::NONE;
}

// Milliseconds, falling back to microseconds and then nanoseconds below 1 in magnitude.
UnitChoice DefaultUnit(const TimeValue& time) {
  UnitChoice choice{time.GetMilliseconds(), "ms"};
  if (std::fabs(choice.value) < 1.0) choice = {time.GetMicroseconds(), "us"};
  if (std::fabs(choice.value) < 1.0) choice = {time.GetNanoseconds(), "ns"};
  return choice;
}

UnitChoice ChooseUnit(const TimeValue& time, TimerUnit unit) {
  switch (unit) {
    case TimerUnit::MINUTES: return {time.GetMinutes(), "min"};
    case TimerUnit::SECONDS: return {time.GetSeconds(), "s"};
    case TimerUnit::NANOSECONDS: return {time.GetNanoseconds(), "ns"};
    case TimerUnit::MICROSECONDS: return {time.GetMicroseconds(), "us"};
    case TimerUnit::MILLISECONDS: return {time.GetMilliseconds(), "ms"};
    case TimerUnit::PER_SECOND: return {time.GetPerSecond(), "per second"};
    default: return DefaultUnit(time);
  }
}

// The host's float conversion of value with format under the statement's empty key.
String FormatNumber(Float64 value, const Char* format) {
  FormatStatement statement;
  if (!statement.Set(nullptr, format)) return String();
  return StringConversion::_table.FloatToString(value, -1, -3, '0', &statement);
}

// Appends the pieces to text; a failed append drops the whole text.
String AppendOrDrop(String text, const Char* a, const Char* b = nullptr) {
  if (text.IsNull() || !text.AppendCString(a) || (b && !text.AppendCString(b))) return String();
  return text;
}

String MinutesAndSeconds(Float64 seconds) {
  const Float64 minutes = std::floor(seconds / 60.0);
  const Float64 rest = (seconds / 60.0 - minutes) * 60.0;
  String text = AppendOrDrop(FormatNumber(minutes, ".0"), ":");
  String restText = FormatNumber(rest, "2'0'.0");
  if (text.IsNull() || restText.IsNull() || !text.Append(restText)) return String();
  return AppendOrDrop(std::move(text), " min");
}

}  // namespace

String ToString(const TimeValue& time, const FormatStatement* statement) {
  CString unitText;
  if (const CString* timer = StringConversion::GetStatementValue(statement, "timer")) unitText = *timer;
  if (time.IsInfinite()) {
    String text;
    return text.AppendCString("<<infinite>>") ? text : String();
  }
  const TimerUnit unit = TakeTimerUnit(unitText);
  if (unit == TimerUnit::MINUTES_SECONDS) return MinutesAndSeconds(time.GetSeconds());
  const UnitChoice choice = ChooseUnit(time, unit);
  const Char* format = unitText.GetLength() > 0 ? unitText.GetCString() : ".1";
  return AppendOrDrop(FormatNumber(choice.value, format), " ", choice.unit);
}

void FormatConverterOf<TimeValue>::Convert(String& out, const void* value, const FormatStatement* statement) {
  out.Reset();
  if (!value) {
    (void)out.SetCString("nullptr");
    return;
  }
  out = ToString(*static_cast<const TimeValue*>(value), statement);
}

}  // namespace vorna
