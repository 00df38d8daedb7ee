#include "settings_file.h"

#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>

#include "base64.h"
#include "json_writer.h"
#include "output_file.h"
#include "vorna/array.h"

namespace tessel::cli {

namespace {

// Members keep the order of the file.
using json = nlohmann::ordered_json;
using ByteArray = vorna::Array<vorna::Char>;

constexpr uintmax_t MAX_FILE_BYTES = 16 << 20;

bool IsByteArray(const vorna::DataType* type) { return type && type == vorna::DataTypeOf<ByteArray>(); }

// The name of the type a setting's values have.
std::string StoredTypeName(const SettingInfo& setting) {
  const vorna::DataType* type = setting.defaultData.GetType();
  return type ? TypeName(type->id) : setting.type;
}

const SettingInfo* FindStoredSetting(const SaverInfo& saver, const std::string& key) {
  if (const SettingInfo* described = FindSetting(saver, key)) return described;
  for (const SettingInfo& setting : saver.systemSettings)
    if (setting.key == key) return &setting;
  return nullptr;
}

bool ReadByteArray(const json& value, vorna::Data& data) {
  std::string bytes;
  if (!value.is_string() || !Base64Decode(value.get<std::string>(), bytes)) return false;
  ByteArray array;
  vorna::BaseArray<vorna::Char>* elements = array.MakeWritable();
  return elements && elements->Append(bytes.data(), vorna::Int(bytes.size())) &&
         data.SetValue(vorna::DataTypeOf<ByteArray>(), &array);
}

// The value's text as ParseValue reads it, when the value is of the JSON kind of the type.
bool ValueText(const json& value, const std::string& typeName, std::string& text) {
  if (typeName == "Bool" && value.is_boolean()) {
    text = value.get<bool>() ? "true" : "false";
  } else if ((typeName == "Id" || typeName == "String") && value.is_string()) {
    text = value.get<std::string>();
  } else if (typeName != "Bool" && typeName != "Id" && typeName != "String" && value.is_number()) {
    text = value.dump();
  } else {
    return false;
  }
  return true;
}

bool ReadValue(const json& entry, const SettingInfo& setting, vorna::Data& data, std::string& error) {
  std::string typeName = StoredTypeName(setting);
  if (!entry.is_object() || entry.size() != 2 || !entry.contains("type") || !entry.contains("value") ||
      !entry["type"].is_string()) {
    error = "expected {\"type\": \"" + typeName + "\", \"value\": ...}";
    return false;
  }
  if (entry["type"].get<std::string>() != typeName) {
    error = "is of type " + typeName + ", not " + entry["type"].get<std::string>();
    return false;
  }
  const json& value = entry["value"];
  if (IsByteArray(setting.defaultData.GetType())) {
    if (ReadByteArray(value, data)) return true;
    error = "expected the bytes as base64 text";
    return false;
  }
  std::string text;
  if (!ValueText(value, typeName, text)) {
    error = value.dump() + " is no " + typeName + " value";
    return false;
  }
  return ParseValue(text, typeName, setting.defaultData.GetType(), data, error);
}

bool ReadText(const std::string& path, std::string& text, Failure& failure) {
  std::error_code error;
  uintmax_t size = std::filesystem::file_size(path, error);
  if (!error && size > MAX_FILE_BYTES) {
    failure = UsageFailure(path + ": too large for a settings file");
    return false;
  }
  std::ifstream in(path, std::ios::binary);
  std::stringstream whole;
  if (error || !in || !(whole << in.rdbuf())) {
    failure = {kExitFailure, path + ": cannot be read"};
    return false;
  }
  text = whole.str();
  return true;
}

bool Parse(const std::string& path, const std::string& text, json& document, Failure& failure) {
  try {
    document = json::parse(text);
  } catch (const json::exception& error) {
    failure = UsageFailure(path + ": not a settings file: " + error.what());
    return false;
  }
  if (!document.is_object()) {
    failure = UsageFailure(path + ": not a settings file: expected one JSON object");
    return false;
  }
  return true;
}

bool WriteEntry(JsonWriter& json, const vorna::Data& key, const vorna::Data& value, Failure& failure) {
  std::string name = ToText(ValueOf(key));
  const vorna::DataType* type = value.GetType();
  SettingValue shown = ValueOf(value);
  if (!type || (shown.kind == SettingValue::Kind::kNone && !IsByteArray(type))) {
    failure = {kExitFailure, "the setting " + name + " holds a value that a settings file cannot keep"};
    return false;
  }
  json.Key(name);
  json.BeginObject();
  json.Field("type", TypeName(type->id));
  json.Key("value");
  if (IsByteArray(type)) {
    vorna::Block<const vorna::Char> bytes = static_cast<const ByteArray*>(value.GetAddress())->ToBlock();
    json.String(Base64Encode(std::string_view(bytes.data, size_t(bytes.count))));
  } else {
    WriteValue(json, shown);
  }
  json.EndObject();
  return true;
}

}  // namespace

bool ReadSettingsFile(const std::string& path, const SaverInfo& saver, vorna::DataDictionary& settings,
                      Failure& failure) {
  std::error_code missing;
  if (!std::filesystem::exists(path, missing) && !missing) return true;
  std::string text;
  json document;
  if (!ReadText(path, text, failure) || !Parse(path, text, document, failure)) return false;
  for (const auto& [key, entry] : document.items()) {
    const SettingInfo* setting = FindStoredSetting(saver, key);
    if (!setting) {
      failure = UsageFailure(path + ": the saver " + saver.id + " has no setting \"" + key + "\"");
      return false;
    }
    vorna::Data value;
    std::string error;
    if (!ReadValue(entry, *setting, value, error) ||
        settings.Set(vorna::ConstDataPtr(setting->identifier), value).IsError()) {
      failure = UsageFailure(path + ": setting " + key + ": " + (error.empty() ? "cannot be set" : error));
      return false;
    }
  }
  return true;
}

bool WriteSettingsFile(const std::string& path, const vorna::DataDictionary& settings, Failure& failure) {
  // One key to a line, so that the file reads and edits well.
  std::string text = "{";
  for (vorna::Int i = 0; i < settings.GetCount(); ++i) {
    const vorna::Data* key = nullptr;
    const vorna::Data* value = settings.GetEntry(i, &key);
    JsonWriter entry;
    if (!WriteEntry(entry, *key, *value, failure)) return false;
    text += (i == 0 ? "\n  " : ",\n  ") + entry.Text();
  }
  text += "\n}\n";
  OutputFile file;
  if (!file.Prepare(path, failure)) return false;
  std::ofstream out(file.TemporaryPath(), std::ios::binary);
  if (!(out << text) || !(out.close(), out)) {
    failure = {kExitFailure, path + ": cannot be written"};
    return false;
  }
  return file.Commit(failure);
}

}  // namespace tessel::cli
