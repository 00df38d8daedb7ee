// vorna.StringConversion#1 as the host serves it: the @ format language and the number
// conversions behind the converters. A placeholder is "@" or "@{statement}"; "@@" is a
// literal "@". A statement is either "key=value;key=value" or a bare text, which is the
// value under the empty key: the number format. Number formats: "x" or "X" for
// hexadecimal (upper-case digits; a value is shown in its own width, so a negative
// Int32 reads as its 32-bit pattern), and for floats [width]['fill'][.precision], such
// as ".1" or "2'0'.0".
#include <algorithm>
#include <cinttypes>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <new>
#include <string>
#include <utility>

#include "providers/host_services.h"
#include "providers/providers.h"
#include "vorna/formatstatement.h"
#include "vorna/formatstring.h"

namespace vorna::host {

namespace {

constexpr SourceLocation FORMAT_LOCATION{"host/format", 1, 0};

Bool AddValue(FormatStatement& statement, const std::string& key, const std::string& value) {
  return statement.Set(key.c_str(), value.data(), Int(value.size()));
}

Bool ParseStatement(const std::string& text, FormatStatement& statement) {
  if (text.find('=') == std::string::npos) return AddValue(statement, "", text);
  size_t start = 0;
  while (start <= text.size()) {
    size_t end = text.find(';', start);
    std::string pair = text.substr(start, end == std::string::npos ? std::string::npos : end - start);
    size_t eq = pair.find('=');
    if (!pair.empty() && !AddValue(statement, pair.substr(0, eq), eq == std::string::npos ? "" : pair.substr(eq + 1)))
      return false;
    if (end == std::string::npos) break;
    start = end + 1;
  }
  return true;
}

const CString* GetStatementValue(const FormatStatement* statement, const Char* key) { return statement->Get(key); }

std::string NumberFormat(const FormatStatement* statement) {
  const CString* value = statement ? GetStatementValue(statement, "") : nullptr;
  return value ? value->GetCString() : "";
}

String FromText(const std::string& text) {
  String result;
  (void)result.SetCString(text.data(), Int(text.size()));
  return result;
}

String UIntToString(UInt64 value, Int size, const FormatStatement* statement) {
  if (size < 8) value &= (UInt64(1) << (size * 8)) - 1;
  std::string format = NumberFormat(statement);
  char buffer[32];
  if (format == "x" || format == "X")
    std::snprintf(buffer, sizeof(buffer), "%" PRIX64, value);
  else
    std::snprintf(buffer, sizeof(buffer), "%" PRIu64, value);
  return FromText(buffer);
}

String IntToString(Int64 value, Int size, const FormatStatement* statement) {
  std::string format = NumberFormat(statement);
  if (format == "x" || format == "X") return UIntToString(UInt64(value), size, statement);
  return FromText(std::to_string(value));
}

struct FloatFormat {
  int width = 0;
  char fill = ' ';
  int precision = -1;
};

// A format text comes from outside: the widest field and the most digits it can ask
// for are capped, so that "@{99999999999}" neither overflows nor fills the memory.
constexpr int MAX_FIELD_WIDTH = 4096;
constexpr int MAX_PRECISION = 64;

// The digits from text[i] on, as a number no larger than limit; i moves past them.
int ParseCapped(const std::string& text, size_t& i, int limit) {
  int value = 0;
  while (i < text.size() && std::isdigit(static_cast<unsigned char>(text[i])))
    value = std::min(value * 10 + (text[i++] - '0'), limit);
  return value;
}

// [width]['fill'][.precision]; a precision that is not a number (".-1") is none.
FloatFormat ParseFloatFormat(const std::string& text, Char defaultFill) {
  FloatFormat f;
  f.fill = defaultFill;
  size_t i = 0;
  f.width = ParseCapped(text, i, MAX_FIELD_WIDTH);
  if (i + 2 < text.size() && text[i] == '\'' && text[i + 2] == '\'') {
    f.fill = text[i + 1];
    i += 3;
  }
  if (i < text.size() && text[i] == '.') {
    ++i;
    const bool digits = i < text.size() && std::isdigit(static_cast<unsigned char>(text[i]));
    const bool negative = !digits && i < text.size() && text[i] == '-';
    f.precision = negative ? -1 : ParseCapped(text, i, MAX_PRECISION);
  }
  return f;
}

String FloatToString(Float64 value, Int, Int, Char fill, const FormatStatement* statement) {
  FloatFormat f = ParseFloatFormat(NumberFormat(statement), fill);
  char buffer[400];
  if (f.precision >= 0)
    std::snprintf(buffer, sizeof(buffer), "%.*f", f.precision, value);
  else
    std::snprintf(buffer, sizeof(buffer), "%.15g", value);
  std::string text = buffer;
  if (Int(text.size()) < f.width) text.insert(0, size_t(f.width) - text.size(), f.fill);
  return FromText(text);
}

// A GUID's 16 bytes in the registry form: 8-4-4-4-12 hexadecimal digits, the first
// three groups little-endian words as the platform lays them out.
String GuidToString(const void* guid, Int braces, Int upperCase, Int) {
  const auto* b = static_cast<const UChar*>(guid);
  UInt32 data1 = UInt32(b[0]) | UInt32(b[1]) << 8 | UInt32(b[2]) << 16 | UInt32(b[3]) << 24;
  unsigned data2 = b[4] | b[5] << 8, data3 = b[6] | b[7] << 8;
  char text[40];
  std::snprintf(text, sizeof(text),
                upperCase ? "%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X" : "%08x-%04x-%04x-%02x%02x-%02x%02x%02x%02x%02x%02x",
                data1, data2, data3, b[8], b[9], b[10], b[11], b[12], b[13], b[14], b[15]);
  return FromText(braces ? std::string("{") + text + "}" : std::string(text));
}

// Appends the text of one argument; false when out of memory.
Bool AppendArgument(String& out, const void* value, FormatConverter converter, const std::string& statementText) {
  FormatStatement statement;
  Bool hasStatement = !statementText.empty();
  if (hasStatement && !ParseStatement(statementText, statement)) return false;
  String text;
  converter(text, value, hasStatement ? &statement : nullptr);
  return out.Append(text);
}

String* FormatString(const Char* format, Int count, const void* const* values, const FormatConverter* converters) {
  String result;
  Int next = 0;
  std::string literal;
  Bool ok = true;
  for (const Char* p = format; *p && ok; ++p) {
    if (*p != '@') {
      literal += *p;
      continue;
    }
    if (p[1] == '@') {
      literal += '@';
      ++p;
      continue;
    }
    std::string statement;
    if (p[1] == '{') {
      const Char* close = std::strchr(p + 2, '}');
      if (close) {
        statement.assign(p + 2, close);
        p = close;
      }
    }
    ok = result.AppendCString(literal.data(), Int(literal.size()));
    literal.clear();
    if (ok && next < count) ok = AppendArgument(result, values[next], converters[next], statement);
    ++next;
  }
  if (ok) ok = result.AppendCString(literal.data(), Int(literal.size()));
  if (!ok) return nullptr;
  void* block = System::Alloc(sizeof(String), FORMAT_LOCATION);
  return block ? new (block) String(std::move(result)) : nullptr;
}

StringConversion::Table MakeTable() {
  StringConversion::Table table{};
  table.FormatString = &FormatString;
  table.FloatToString = &FloatToString;
  table.IntToString = &IntToString;
  table.UIntToString = &UIntToString;
  table.GetStatementValue = &GetStatementValue;
  table.GuidToString = &GuidToString;
  return table;
}

const StringConversion::Table g_table = MakeTable();

}  // namespace

void RegisterStringConversionProvider() { RegisterProvider(StringConversion::ID, &g_table, StringConversion::COUNT); }

}  // namespace vorna::host
