// The float formats of the @ language, [width]['fill'][.precision], as message texts
// from outside write them: ordinary ones, and ones that ask for absurd fields.
#include <gtest/gtest.h>

#include <string>

#include "vorna/formatstring.h"

namespace vorna {
namespace {

std::string Text(const String& s) {
  Result<CString> bytes = s.GetCString();
  return bytes.IsError() ? "<error>" : bytes.GetValue().GetCString();
}

struct FormatCase {
  const Char* format;
  Float64 value;
  std::string expected;
};

TEST(NumberFormatTest, WidthFillAndPrecision) {
  const FormatCase cases[] = {
      {"@{.1}", 2.25, "2.2"},
      {"@{2'0'.0}", 7.0, "07"},
      {"@{6.2}", 3.14159, "003.14"},
      {"@{6' '.2}", 3.14159, "  3.14"},
      {"@{.-5}", 0.5, "0.5"},
      {"@{.}", 2.5, "2"},
  };
  for (const FormatCase& c : cases) EXPECT_EQ(Text(FormatToString(c.format, c.value)), c.expected) << c.format;
}

// A width or a precision past what any message needs is capped rather than obeyed:
// these once overflowed an int, or asked for a string of a billion characters.
TEST(NumberFormatTest, AbsurdFieldsAreCapped) {
  const std::string wide = Text(FormatToString("@{99999999999}", 1.5));
  EXPECT_EQ(wide.size(), 4096u);
  EXPECT_EQ(wide.substr(wide.size() - 3), "1.5");
  const std::string precise = Text(FormatToString("@{.2147483648}", 1.0));
  EXPECT_EQ(precise, "1." + std::string(64, '0'));
  const std::string found = Text(FormatToString("E : @\x15:or 0x@{333333333333333333x@{x}: .B:", 1.0, 2.0));
  EXPECT_NE(found, "<error>");
  EXPECT_LT(found.size(), 4096u + 64u);
}

}  // namespace
}  // namespace vorna
