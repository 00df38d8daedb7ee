// TimeValue: a time or a duration as one Float64 of seconds. It carries no unit; the
// conversions below give counts of a unit, and 100-nanosecond ticks are the callers'
// business through ToTicks and FromTicks. A plain value, free to copy between threads.
#pragma once

#include <bit>

#include "vorna/datatypes.h"
#include "vorna/formatstring.h"

namespace vorna {

// An unlimited time: the largest finite Float64.
inline constexpr Float64 TIMEVALUE_INFINITE = std::bit_cast<Float64>(UInt64(0x7FEFFFFFFFFFFFFFull));
// Its negative: a start that isn't known.
inline constexpr Float64 TIMEVALUE_MINUSINFINITE = std::bit_cast<Float64>(UInt64(0xFFEFFFFFFFFFFFFFull));
// What a conversion gives for a finite time that the unit can't hold.
inline constexpr Float64 TIMEVALUE_OVERFLOWED = std::bit_cast<Float64>(UInt64(0x7FDFFFFFFFFFFFFFull));

// The largest Float64 divided by 1000, 1e6 and 1e9: a time at or above one of these
// isn't multiplied into that unit.
inline constexpr Float64 TIMEVALUE_MILLISECONDS_LIMIT = std::bit_cast<Float64>(UInt64(0x7F50624DD2F1A9FBull));
inline constexpr Float64 TIMEVALUE_MICROSECONDS_LIMIT = std::bit_cast<Float64>(UInt64(0x7EB0C6F7A0B5ED8Cull));
inline constexpr Float64 TIMEVALUE_NANOSECONDS_LIMIT = std::bit_cast<Float64>(UInt64(0x7E112E0BE826D694ull));

class TimeValue {
 public:
  constexpr TimeValue() = default;
  constexpr explicit TimeValue(Float64 seconds) : _seconds(seconds) {}

  static constexpr TimeValue Infinite() { return TimeValue(TIMEVALUE_INFINITE); }
  static constexpr TimeValue MinusInfinite() { return TimeValue(TIMEVALUE_MINUSINFINITE); }

  constexpr Float64 GetSeconds() const { return _seconds; }
  constexpr Bool IsInfinite() const { return _seconds == TIMEVALUE_INFINITE; }

  // seconds * 1000, 1e6, 1e9. At or above the unit's limit infinite stays infinite and
  // any other time gives TIMEVALUE_OVERFLOWED.
  constexpr Float64 GetMilliseconds() const { return Scaled(1000.0, TIMEVALUE_MILLISECONDS_LIMIT); }
  constexpr Float64 GetMicroseconds() const { return Scaled(1e6, TIMEVALUE_MICROSECONDS_LIMIT); }
  constexpr Float64 GetNanoseconds() const { return Scaled(1e9, TIMEVALUE_NANOSECONDS_LIMIT); }
  constexpr Float64 GetMinutes() const { return _seconds * 0.016666666666666666; }
  // 1 / seconds; 0 for a time of 0.
  constexpr Float64 GetPerSecond() const { return _seconds == 0.0 ? 0.0 : 1.0 / _seconds; }

  // A whole count of 1 / scale seconds: seconds * scale moved 0.001 away from zero, then
  // cut towards zero, so 1/25 s at 1e6 gives 40000 and -1/25 s -40000.
  constexpr Int GetWholeNumber(Float64 scale) const {
    const Float64 scaled = _seconds * scale;
    return Int(_seconds >= 0.0 ? scaled + 0.001 : scaled - 0.001);
  }

  // The stopwatch: Start sets the time to the clock, Stop replaces it by the time gone
  // since.
  void Start() { _seconds = System::GetClock(); }
  void Stop() { _seconds = System::GetClock() - _seconds; }

  constexpr auto operator<=>(const TimeValue&) const = default;
  constexpr TimeValue operator+(TimeValue other) const { return TimeValue(_seconds + other._seconds); }
  constexpr TimeValue operator-(TimeValue other) const { return TimeValue(_seconds - other._seconds); }

 private:
  constexpr Float64 Scaled(Float64 scale, Float64 limit) const {
    if (_seconds < limit) return _seconds * scale;
    return IsInfinite() ? TIMEVALUE_INFINITE : TIMEVALUE_OVERFLOWED;
  }

  Float64 _seconds = 0.0;
};

// 100-nanosecond ticks of a time, rounded: microseconds * 10 + 0.5, cut towards zero.
constexpr Int ToTicks(const TimeValue& time) { return Int(time.GetMicroseconds() * 10.0 + 0.5); }

// The time of a count of 100-nanosecond ticks.
constexpr TimeValue FromTicks(Int ticks) { return TimeValue(Float64(ticks) * 100.0 * 1e-9); }

// The text form, as the @ placeholder shows it:
// - "<<infinite>>" for an infinite time, whatever the statement says;
// - by default the value in "ms", or in "us" when that is below 1 in magnitude, or in
//   "ns" when that too is, one digit behind the point: 0 reads "0.0 ns", 2 s "2000.0 ms";
// - a statement's "timer" value picks the unit by its first letters, in this order:
//   "min", "m_s" (whole minutes, ":", two-digit seconds, " min"), "s", "ns", "us",
//   "ms", "ps" (per second). A unit of n letters cuts the first 2n + 1 bytes ("s, .3"
//   leaves ".3"), and the rest is the number format; a "timer" value that matches no
//   unit is the number format as a whole. An empty number format is ".1".
// A null String when memory runs out.
String ToString(const TimeValue& time, const FormatStatement* statement);

template <>
struct FormatConverterOf<TimeValue> {
  static void Convert(String& out, const void* value, const FormatStatement* statement);
};

VORNA_DECLARE_DATATYPE(TimeValue, TimeValue);

}  // namespace vorna
