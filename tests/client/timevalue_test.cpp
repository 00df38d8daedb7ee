#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdio>
#include <string>

#include "host_environment.h"
#include "vorna/formatstatement.h"
#include "vorna/timevalue.h"

namespace vorna {
namespace {

std::string Text(const String& s) {
  Result<CString> bytes = s.GetCString();
  return bytes.IsError() ? "<error>" : bytes.GetValue().GetCString();
}

std::string Show(Float64 seconds, const Char* format = "@") {
  return Text(FormatToString(format, TimeValue(seconds)));
}

UInt64 Bits(Float64 value) { return std::bit_cast<UInt64>(value); }

TEST(TimeValueTest, ConstantsAndLimits) {
  EXPECT_EQ(TIMEVALUE_INFINITE, 1.7976931348623157e308);
  EXPECT_EQ(TIMEVALUE_MINUSINFINITE, -TIMEVALUE_INFINITE);
  EXPECT_EQ(TIMEVALUE_OVERFLOWED, TIMEVALUE_INFINITE / 2.0);
  EXPECT_DOUBLE_EQ(TIMEVALUE_MILLISECONDS_LIMIT, TIMEVALUE_INFINITE / 1000.0);
  EXPECT_DOUBLE_EQ(TIMEVALUE_MICROSECONDS_LIMIT, TIMEVALUE_INFINITE / 1e6);
  EXPECT_DOUBLE_EQ(TIMEVALUE_NANOSECONDS_LIMIT, TIMEVALUE_INFINITE / 1e9);
}

TEST(TimeValueTest, ConversionsStopAtTheirLimits) {
  EXPECT_EQ(TimeValue(1.5).GetMilliseconds(), 1500.0);
  EXPECT_EQ(TimeValue(1.5).GetMicroseconds(), 1.5e6);
  EXPECT_EQ(TimeValue(1.5).GetNanoseconds(), 1.5e9);
  EXPECT_EQ(TimeValue(90.0).GetMinutes(), 90.0 * 0.016666666666666666);
  EXPECT_EQ(TimeValue(0.04).GetPerSecond(), 25.0);
  EXPECT_EQ(TimeValue(0.0).GetPerSecond(), 0.0);

  EXPECT_EQ(Bits(TimeValue::Infinite().GetNanoseconds()), Bits(TIMEVALUE_INFINITE));
  EXPECT_EQ(Bits(TimeValue(TIMEVALUE_MILLISECONDS_LIMIT).GetMilliseconds()), Bits(TIMEVALUE_OVERFLOWED)) << "at the limit";
  const Float64 below = std::nextafter(TIMEVALUE_MILLISECONDS_LIMIT, 0.0);
  EXPECT_EQ(TimeValue(below).GetMilliseconds(), below * 1000.0) << "just below the limit";
  EXPECT_EQ(Bits(TimeValue(1e303).GetMicroseconds()), Bits(TIMEVALUE_OVERFLOWED));
  EXPECT_EQ(TimeValue(1e303).GetMilliseconds(), 1e303 * 1000.0);
  EXPECT_EQ(Bits(TimeValue(1e303).GetNanoseconds()), Bits(TIMEVALUE_OVERFLOWED));
}

TEST(TimeValueTest, WholeNumbersMoveAwayFromZero) {
  EXPECT_EQ(TimeValue(1.0 / 25.0).GetWholeNumber(1e6), 40000);
  EXPECT_EQ(TimeValue(-1.0 / 25.0).GetWholeNumber(1e6), -40000);
  EXPECT_EQ(TimeValue(1001.0 / 30000.0).GetWholeNumber(1e6), 33366);
  EXPECT_EQ(TimeValue(0.0).GetWholeNumber(1e6), 0);
  EXPECT_EQ(TimeValue(2.998).GetWholeNumber(1.0), 2) << "cut, not rounded";
}

TEST(TimeValueTest, TicksRoundAndComeBack) {
  EXPECT_EQ(ToTicks(TimeValue(1.0)), 10000000);
  EXPECT_EQ(ToTicks(TimeValue(0.04)), 400000);
  EXPECT_EQ(ToTicks(TimeValue(0.00000004)), 0) << "0.4 ticks round down";
  EXPECT_EQ(ToTicks(TimeValue(0.00000005)), 1) << "0.5 ticks round up";
  EXPECT_EQ(FromTicks(400000).GetSeconds(), 400000.0 * 100.0 * 1e-9);
  EXPECT_EQ(FromTicks(333667).GetSeconds(), 333667.0 * 100.0 * 1e-9);
}

TEST(TimeValueTest, DefaultTextNeverRisesAboveMilliseconds) {
  EXPECT_EQ(Show(TIMEVALUE_INFINITE), "<<infinite>>");
  EXPECT_EQ(Show(TIMEVALUE_INFINITE, "@{timer=s}"), "<<infinite>>");
  EXPECT_EQ(Show(0.0), "0.0 ns");
  EXPECT_EQ(Show(0.0005), "500.0 us");
  EXPECT_EQ(Show(0.5), "500.0 ms");
  EXPECT_EQ(Show(2.0), "2000.0 ms");
  EXPECT_EQ(Show(3600.0), "3600000.0 ms");
  EXPECT_EQ(Show(-0.5), "-500.0 ms") << "the unit goes by the magnitude";
  EXPECT_EQ(Show(-0.0000025), "-2.5 us");
  char overflowed[400];
  std::snprintf(overflowed, sizeof(overflowed), "%.1f ms", TIMEVALUE_OVERFLOWED);
  EXPECT_EQ(Show(1e306), overflowed) << "refused by every unit, shown in ms";
  EXPECT_EQ(Text(FormatToString("Seek Time: @, SeekTimeDifference: @, Max: @", TimeValue(1.0), TimeValue(0.25),
                                TimeValue::Infinite())),
            "Seek Time: 1000.0 ms, SeekTimeDifference: 250.0 ms, Max: <<infinite>>");
}

TEST(TimeValueTest, TimerUnitsAndNumberFormats) {
  EXPECT_EQ(Show(2.0, "@{timer=s}"), "2.0 s");
  EXPECT_EQ(Show(2.0, "@{timer=Sec}"), "2.0 s") << "letters compared lower-cased";
  EXPECT_EQ(Show(90.0, "@{timer=min}"), "1.5 min");
  EXPECT_EQ(Show(125.0, "@{timer=m_s}"), "2:05 min");
  EXPECT_EQ(Show(-30.0, "@{timer=m_s}"), "-1:30 min") << "whole minutes are floored";
  EXPECT_EQ(Show(2.0, "@{timer=ns}"), "2000000000.0 ns");
  EXPECT_EQ(Show(2.0, "@{timer=us}"), "2000000.0 us");
  EXPECT_EQ(Show(0.5, "@{timer=ms}"), "500.0 ms");
  EXPECT_EQ(Show(0.04, "@{timer=ps}"), "25.0 per second");
  EXPECT_EQ(Show(2.0, "@{timer=.3}"), "2000.000 ms") << "no unit: the whole text is the number format";
  EXPECT_EQ(Show(2.0, "@{timer=s, .3}"), "2.000 s") << "a one-letter unit cuts three bytes";
  EXPECT_EQ(Show(2.0, "@{other=s}"), "2000.0 ms");
}

TEST(TimeValueTest, ConverterOfANullAddress) {
  String out;
  FormatConverterOf<TimeValue>::Convert(out, nullptr, nullptr);
  EXPECT_EQ(Text(out), "nullptr");
}

TEST(TimeValueTest, StopwatchMeasuresClockDifferences) {
  TimeValue watch;
  watch.Start();
  const Float64 started = watch.GetSeconds();
  while (System::GetClock() == started) {
  }
  watch.Stop();
  EXPECT_GT(watch.GetSeconds(), 0.0);
  EXPECT_LT(watch.GetSeconds(), 60.0);
}

TEST(FormatStatementTest, NullKeyIsTheEmptyKeyAndLaterValuesReplace) {
  FormatStatement statement;
  EXPECT_EQ(statement.Get(""), nullptr);
  ASSERT_TRUE(statement.Set(nullptr, ".1"));
  ASSERT_TRUE(statement.Set("timer", "ms"));
  ASSERT_TRUE(statement.Set("timer", "us"));
  ASSERT_NE(statement.Get(""), nullptr);
  EXPECT_STREQ(statement.Get("")->GetCString(), ".1");
  EXPECT_STREQ(statement.Get("timer")->GetCString(), "us");
  EXPECT_EQ(statement.Get("time"), nullptr);
  EXPECT_EQ(Text(StringConversion::_table.FloatToString(2.25, -1, -3, '0', &statement)), "2.2");
}

}  // namespace
}  // namespace vorna
