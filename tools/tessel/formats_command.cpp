// tessel formats [--json]: the file formats, handlers and savers that the loaded modules
// registered, with the suffixes each file format and saver names.
#include <cstdio>
#include <string>
#include <vector>

#include "command_arguments.h"
#include "commands.h"
#include "json_writer.h"
#include "saver_catalogue.h"
#include "session.h"
#include "vorna/extensionpoint.h"
#include "vorna/mediasession_output.h"
#include "vorna/referencedata.h"
#include "vorna_export.h"

namespace tessel::cli {

namespace {

struct Member {
  std::string id;
  std::vector<std::string> suffixes;
};

std::vector<Member> FileFormats() {
  std::vector<Member> members;
  vorna::ExtensionPointHandle* formats = vorna::ExtensionPoint::Find(vorna::Id("vorna.FileFormats"));
  for (const std::string& id : vorna::host::ListRegistry("vorna.FileFormats")) {
    const vorna::Data* entry = vorna::ExtensionPoint::FindEntry(formats, vorna::Id(id.c_str()));
    members.push_back({id, SuffixesOf(vorna::GetObjectFromData<vorna::FileFormatInterface>(entry))});
  }
  return members;
}

std::vector<Member> Savers() {
  std::vector<Member> members;
  for (const std::string& id : ListSavers()) {
    auto saver = vorna::host::CreateSaver(id);
    members.push_back(
        {id, saver.IsError() ? std::vector<std::string>()
                             : SuffixesOf(vorna::Cast<vorna::FileFormatInterface>(saver.GetValue().GetFileFormat()))});
  }
  return members;
}

std::vector<Member> Handlers() {
  std::vector<Member> members;
  for (const std::string& id : vorna::host::ListRegistry("vorna.FileFormatHandlers")) members.push_back({id, {}});
  return members;
}

void PrintMembers(const char* title, const char* registry, const std::vector<Member>& members) {
  std::printf("%s (%s):\n", title, registry);
  if (members.empty()) std::printf("  none\n");
  for (const Member& member : members) {
    std::string suffixes;
    for (const std::string& suffix : member.suffixes) suffixes += " " + suffix;
    if (suffixes.empty()) {
      std::printf("  %s\n", member.id.c_str());
    } else {
      std::printf("  %-28s  suffixes:%s\n", member.id.c_str(), suffixes.c_str());
    }
  }
}

void WriteMembers(JsonWriter& json, const char* key, const std::vector<Member>& members, bool withSuffixes) {
  json.Key(key);
  json.BeginArray();
  for (const Member& member : members) {
    if (!withSuffixes) {
      json.String(member.id);
      continue;
    }
    json.BeginObject();
    json.Field("id", member.id);
    json.Key("suffixes");
    json.BeginArray();
    for (const std::string& suffix : member.suffixes) json.String(suffix);
    json.EndArray();
    json.EndObject();
  }
  json.EndArray();
}

}  // namespace

int RunFormats(const Options& options) {
  CommandArguments arguments;
  Failure failure;
  Session session;
  if (!arguments.Parse(options.arguments, {{}, {"--json"}, 0, "nothing but --json"}, failure) || !session.Open(options, failure))
    return Report(failure);
  if (!arguments.Has("--json")) {
    PrintMembers("file formats", "vorna.FileFormats", FileFormats());
    PrintMembers("file format handlers", "vorna.FileFormatHandlers", Handlers());
    PrintMembers("savers", "vorna.ImageSavers", Savers());
    return kExitOk;
  }
  JsonWriter json;
  json.BeginObject();
  WriteMembers(json, "fileformats", FileFormats(), true);
  WriteMembers(json, "handlers", Handlers(), false);
  WriteMembers(json, "savers", Savers(), true);
  json.EndObject();
  std::printf("%s\n", json.Text().c_str());
  return kExitOk;
}

}  // namespace tessel::cli
