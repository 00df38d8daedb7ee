#include "json_writer.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace tessel::cli {

void JsonWriter::BeforeValue() {
  if (_afterKey) {
    _afterKey = false;
    return;
  }
  if (!_first.empty()) {
    if (!_first.back()) _text += ',';
    _first.back() = false;
  }
}

void JsonWriter::Open(char bracket) {
  BeforeValue();
  _text += bracket;
  _first.push_back(true);
}

void JsonWriter::Close(char bracket) {
  _text += bracket;
  _first.pop_back();
}

void JsonWriter::Key(std::string_view key) {
  String(key);
  _text += ':';
  _afterKey = true;
}

void JsonWriter::String(std::string_view text) {
  BeforeValue();
  _text += '"';
  for (unsigned char c : text) {
    switch (c) {
      case '"': _text += "\\\""; break;
      case '\\': _text += "\\\\"; break;
      case '\n': _text += "\\n"; break;
      case '\r': _text += "\\r"; break;
      case '\t': _text += "\\t"; break;
      default:
        if (c < 0x20) {
          char escaped[8];
          std::snprintf(escaped, sizeof escaped, "\\u%04x", c);
          _text += escaped;
        } else {
          _text += char(c);
        }
    }
  }
  _text += '"';
}

void JsonWriter::Number(double value) {
  if (!std::isfinite(value)) return Null();
  BeforeValue();
  // The shortest of the two forms that reads back as the same number.
  char text[32];
  std::snprintf(text, sizeof text, "%.15g", value);
  if (std::strtod(text, nullptr) != value) std::snprintf(text, sizeof text, "%.17g", value);
  _text += text;
}

void JsonWriter::Integer(int64_t value) {
  BeforeValue();
  _text += std::to_string(value);
}

void JsonWriter::Bool(bool value) {
  BeforeValue();
  _text += value ? "true" : "false";
}

void JsonWriter::Null() {
  BeforeValue();
  _text += "null";
}

void JsonWriter::FieldOrNull(std::string_view key, const std::optional<std::string>& text) {
  Key(key);
  text ? String(*text) : Null();
}

void JsonWriter::FieldOrNull(std::string_view key, const std::optional<double>& value) {
  Key(key);
  value ? Number(*value) : Null();
}

void JsonWriter::FieldOrNull(std::string_view key, const std::optional<int64_t>& value) {
  Key(key);
  value ? Integer(*value) : Null();
}

}  // namespace tessel::cli
