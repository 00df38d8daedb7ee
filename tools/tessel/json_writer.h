// Writes one JSON value into a string, on one line: objects, arrays, strings, numbers,
// true, false and null. Keys and values are written in the order they are given; commas come by
// themselves. A number that JSON cannot hold (infinite, NaN) is written as null.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessel::cli {

class JsonWriter {
 public:
  void BeginObject() { Open('{'); }
  void EndObject() { Close('}'); }
  void BeginArray() { Open('['); }
  void EndArray() { Close(']'); }
  // The key of the next value of the enclosing object.
  void Key(std::string_view key);
  void String(std::string_view text);
  void Number(double value);
  void Integer(int64_t value);
  void Bool(bool value);
  void Null();

  void Field(std::string_view key, std::string_view text) { Key(key), String(text); }
  // Key and value, or key and null when the value is empty.
  void FieldOrNull(std::string_view key, const std::optional<std::string>& text);
  void FieldOrNull(std::string_view key, const std::optional<double>& value);
  void FieldOrNull(std::string_view key, const std::optional<int64_t>& value);

  const std::string& Text() const { return _text; }

 private:
  void Open(char bracket);
  void Close(char bracket);
  void BeforeValue();

  std::string _text;
  std::vector<bool> _first;  // per open bracket: no element written yet
  bool _afterKey = false;
};

}  // namespace tessel::cli
