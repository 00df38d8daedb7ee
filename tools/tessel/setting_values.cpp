#include "setting_values.h"

#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>

#include "host_text.h"
#include "vorna/datatypelib.h"
#include "vorna/string.h"

namespace tessel::cli {

namespace {

constexpr std::string_view TYPE_PREFIX = "vorna.DataTypes:vorna.";

template <typename T>
T At(const vorna::Data& data) {
  T value;
  std::memcpy(&value, data.GetAddress(), sizeof(T));
  return value;
}

SettingValue Integer(int64_t value) { return {SettingValue::Kind::kInteger, {}, value, 0, false}; }
SettingValue Text(std::string text) { return {SettingValue::Kind::kText, std::move(text), 0, 0, false}; }

std::string IdText(const vorna::Id& id) { return std::string(id.GetCString(), size_t(id.GetLength())); }

bool ParseWhole(const std::string& text, int64_t minimum, int64_t maximum, int64_t& value) {
  char* end = nullptr;
  errno = 0;
  long long parsed = std::strtoll(text.c_str(), &end, 10);
  if (text.empty() || *end != '\0' || errno != 0 || parsed < minimum || parsed > maximum) return false;
  value = parsed;
  return true;
}

template <typename T>
bool Store(const vorna::DataType* type, const T& parsed, vorna::Data& value) {
  if (!type) type = vorna::DataTypeOf<T>();
  return type && type->size == vorna::Int(sizeof(T)) && value.SetValue(type, &parsed);
}

}  // namespace

std::string TypeName(const vorna::Id& typeId) {
  std::string id = IdText(typeId);
  return id.rfind(TYPE_PREFIX, 0) == 0 ? id.substr(TYPE_PREFIX.size()) : id;
}

SettingValue ValueOf(const vorna::Data& data) {
  if (!data.GetType()) return {};
  std::string type = TypeName(data.GetType()->id);
  if (type == "Bool") return {SettingValue::Kind::kBool, {}, 0, 0, At<vorna::Bool>(data)};
  if (type == "Int32") return Integer(At<vorna::Int32>(data));
  if (type == "UInt32") return Integer(At<vorna::UInt32>(data));
  if (type == "Int64" || type == "BytesValue") return Integer(At<vorna::Int64>(data));
  if (type == "Float64") return {SettingValue::Kind::kNumber, {}, 0, At<vorna::Float64>(data), false};
  if (type == "Id") return Text(IdText(*static_cast<const vorna::Id*>(data.GetAddress())));
  if (type == "InternedId") return Text(IdText(**static_cast<const vorna::InternedId*>(data.GetAddress())));
  if (type == "String") return Text(ToStdString(*static_cast<const vorna::String*>(data.GetAddress())));
  return {};
}

std::vector<SettingValue> ChoicesOf(const vorna::Data& data) {
  std::vector<SettingValue> choices;
  for (const vorna::Id& id : vorna::GetBlockFromData<vorna::Id>(data)) choices.push_back(Text(IdText(id)));
  for (vorna::Int64 number : vorna::GetBlockFromData<vorna::Int64>(data)) choices.push_back(Integer(number));
  for (vorna::Int32 number : vorna::GetBlockFromData<vorna::Int32>(data)) choices.push_back(Integer(number));
  return choices;
}

std::string ToText(const SettingValue& value) {
  switch (value.kind) {
    case SettingValue::Kind::kText: return value.text;
    case SettingValue::Kind::kInteger: return std::to_string(value.integer);
    case SettingValue::Kind::kBool: return value.flag ? "true" : "false";
    case SettingValue::Kind::kNumber: {
      char text[32];
      std::snprintf(text, sizeof text, "%g", value.number);
      return text;
    }
    case SettingValue::Kind::kNone: break;
  }
  return "?";
}

void WriteValue(JsonWriter& json, const SettingValue& value) {
  switch (value.kind) {
    case SettingValue::Kind::kText: return json.String(value.text);
    case SettingValue::Kind::kInteger: return json.Integer(value.integer);
    case SettingValue::Kind::kBool: return json.Bool(value.flag);
    case SettingValue::Kind::kNumber: return json.Number(value.number);
    case SettingValue::Kind::kNone: break;
  }
  json.Null();
}

bool ParseScaled(const std::string& text, int64_t& value) {
  int64_t scale = 1;
  std::string digits = text;
  if (!digits.empty() && (digits.back() == 'k' || digits.back() == 'M')) {
    scale = digits.back() == 'k' ? 1000 : 1000000;
    digits.pop_back();
  }
  int64_t whole = 0;
  if (!ParseWhole(digits, 0, std::numeric_limits<int64_t>::max() / scale, whole)) return false;
  value = whole * scale;
  return true;
}

bool ParseValue(const std::string& text, const std::string& typeName, const vorna::DataType* type,
                vorna::Data& value, std::string& error) {
  int64_t whole = 0;
  bool stored = false;
  if (typeName == "Id") {
    vorna::Id id;
    stored = id.Init(text.c_str(), vorna::Int(text.size())) && Store(type, id, value);
  } else if (typeName == "String") {
    vorna::String string;
    stored = !string.SetCString(text.c_str()).IsError() && Store(type, string, value);
  } else if (typeName == "Bool") {
    bool known = text == "true" || text == "false" || text == "1" || text == "0";
    stored = known && Store(type, vorna::Bool(text == "true" || text == "1"), value);
  } else if (typeName == "Int32") {
    stored = ParseWhole(text, INT32_MIN, INT32_MAX, whole) && Store(type, vorna::Int32(whole), value);
  } else if (typeName == "UInt32") {
    stored = ParseWhole(text, 0, UINT32_MAX, whole) && Store(type, vorna::UInt32(whole), value);
  } else if (typeName == "Int64") {
    stored = ParseWhole(text, INT64_MIN, INT64_MAX, whole) && Store(type, vorna::Int64(whole), value);
  } else if (typeName == "BytesValue") {
    stored = type && ParseScaled(text, whole) && Store(type, vorna::Int64(whole), value);
  } else if (typeName == "Float64") {
    char* end = nullptr;
    double number = std::strtod(text.c_str(), &end);
    stored = !text.empty() && *end == '\0' && std::isfinite(number) && Store(type, vorna::Float64(number), value);
  } else {
    error = "settings of type " + typeName + " cannot be given on the command line";
    return false;
  }
  if (!stored) error = "\"" + text + "\" is no " + typeName + " value";
  return stored;
}

}  // namespace tessel::cli
