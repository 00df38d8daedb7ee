// tessel describe SAVER [--audio-codec C] [--json]: what a saver of vorna.ImageSavers can
// do and the settings it describes, each with its type, default, minimum, maximum and choices,
// and for a saver with system options what its compressor chooser keeps beside them.
// --audio-codec shows the description as it is for that sound codec (the sample rates
// a saver offers may depend on it).
#include <cstdio>

#include "command_arguments.h"
#include "commands.h"
#include "json_writer.h"
#include "saver_catalogue.h"
#include "session.h"

namespace tessel::cli {

namespace {

const ArgumentSpec DESCRIBE_ARGUMENTS{{"--audio-codec"}, {"--json"}, 1, "one SAVER"};

std::string Joined(const std::vector<std::string>& words) {
  std::string text;
  for (const std::string& word : words) text += (text.empty() ? "" : " ") + word;
  return text;
}

void PrintText(const SaverInfo& saver) {
  std::printf("saver %s, suffixes: %s\ncapabilities:\n", saver.id.c_str(), Joined(saver.suffixes).c_str());
  for (const auto& [name, value] : saver.capabilities) std::printf("  %-24s %s\n", name.c_str(), ToText(value).c_str());
  std::printf("settings:\n");
  for (const SettingInfo& setting : saver.settings) {
    std::string line = "  " + setting.key + " (" + setting.type + "), default " + ToText(setting.defaultValue);
    if (setting.minimum.kind != SettingValue::Kind::kNone) line += ", minimum " + ToText(setting.minimum);
    if (setting.maximum.kind != SettingValue::Kind::kNone) line += ", maximum " + ToText(setting.maximum);
    std::vector<std::string> choices;
    for (const SettingValue& choice : setting.choices) choices.push_back(ToText(choice));
    if (!choices.empty()) line += ", choices: " + Joined(choices);
    std::printf("%s\n", line.c_str());
  }
  if (saver.systemSettings.empty()) return;
  std::printf("kept by the compressor chooser (--compressor, --choose, --settings):\n");
  for (const SettingInfo& setting : saver.systemSettings)
    std::printf("  %s (%s)\n", setting.key.c_str(), setting.type.c_str());
}

void PrintJson(const SaverInfo& saver) {
  JsonWriter json;
  json.BeginObject();
  json.Field("saver", saver.id);
  json.Key("suffixes");
  json.BeginArray();
  for (const std::string& suffix : saver.suffixes) json.String(suffix);
  json.EndArray();
  json.Key("capabilities");
  json.BeginObject();
  for (const auto& [name, value] : saver.capabilities) {
    json.Key(name);
    WriteValue(json, value);
  }
  json.EndObject();
  json.Key("settings");
  json.BeginArray();
  for (const SettingInfo& setting : saver.settings) {
    json.BeginObject();
    json.Field("key", setting.key);
    json.Field("type", setting.type);
    json.Key("default");
    WriteValue(json, setting.defaultValue);
    json.Key("minimum");
    WriteValue(json, setting.minimum);
    json.Key("maximum");
    WriteValue(json, setting.maximum);
    json.Key("choices");
    json.BeginArray();
    for (const SettingValue& choice : setting.choices) WriteValue(json, choice);
    json.EndArray();
    json.EndObject();
  }
  json.EndArray();
  json.Key("systemsettings");
  json.BeginArray();
  for (const SettingInfo& setting : saver.systemSettings) {
    json.BeginObject();
    json.Field("key", setting.key);
    json.Field("type", setting.type);
    json.EndObject();
  }
  json.EndArray();
  json.EndObject();
  std::printf("%s\n", json.Text().c_str());
}

// The description again, as it is for settings with the sound codec given.
bool DescribeForAudioCodec(const std::string& codec, SaverInfo& saver, Failure& failure) {
  const SettingInfo* setting = FindSetting(saver, "audio.codec");
  if (!setting) {
    failure = UsageFailure("the saver " + saver.id + " has no setting \"audio.codec\"");
    return false;
  }
  vorna::Data value;
  vorna::DataDictionary settings;
  std::string error;
  if (!ParseValue(codec, setting->type, setting->defaultData.GetType(), value, error) ||
      settings.Set(vorna::ConstDataPtr(setting->identifier), value).IsError()) {
    failure = UsageFailure("--audio-codec: " + error);
    return false;
  }
  SaverInfo again;
  if (!DescribeSaver(saver.id, &settings, again, failure)) return false;
  saver = std::move(again);
  return true;
}

}  // namespace

int RunDescribe(const Options& options) {
  CommandArguments arguments;
  Failure failure;
  Session session;
  SaverInfo saver;
  if (!arguments.Parse(options.arguments, DESCRIBE_ARGUMENTS, failure) || !session.Open(options, failure) ||
      !DescribeSaver(arguments.Positional(0), nullptr, saver, failure) ||
      (arguments.Has("--audio-codec") && !DescribeForAudioCodec(arguments.Text("--audio-codec"), saver, failure)))
    return Report(failure);
  arguments.Has("--json") ? PrintJson(saver) : PrintText(saver);
  return kExitOk;
}

}  // namespace tessel::cli
