// tessel demo [CLIP -o DIR | --json]: loads the module through the host and shows what
// it registered and how much of what it declares of the host the host resolved (with
// --json, as JSON with the unresolved entries by id). Given a clip, it then probes it
// and writes a contact sheet and its sound into DIR, converts it to MP4, to WMV (its
// default codec, WMV3) and to AVI (Motion JPEG), probes those and lays out a sheet of
// each, and says where everything is; `make demo` runs it on a clip it generates.
#include <cstdio>
#include <filesystem>

#include "command_arguments.h"
#include "commands.h"
#include "json_writer.h"
#include "saver_catalogue.h"
#include "session.h"

namespace tessel::cli {

namespace {

void PrintList(const char* title, const std::vector<std::string>& items) {
  std::printf("  %s:\n", title);
  for (const auto& item : items) std::printf("    %s\n", item.c_str());
}

size_t CountResolved(const std::vector<vorna::host::DeclaredEntity>& entities) {
  size_t resolved = 0;
  for (const auto& entity : entities) resolved += entity.resolved ? 1 : 0;
  return resolved;
}

void PrintDeclarations(const vorna::host::ModuleDeclarations& declared) {
  std::printf("  declares %zu interfaces (%zu resolved), %zu objects (%zu resolved), %zu resource ids (%zu resolved)\n",
              declared.interfaces.size(), CountResolved(declared.interfaces), declared.objects.size(),
              CountResolved(declared.objects), declared.resourceIds.size(), CountResolved(declared.resourceIds));
}

void WriteDeclared(JsonWriter& json, const char* key, const std::vector<vorna::host::DeclaredEntity>& entities) {
  json.Key(key);
  json.BeginObject();
  json.Key("declared");
  json.Integer(int64_t(entities.size()));
  json.Key("resolved");
  json.Integer(int64_t(CountResolved(entities)));
  json.Key("unresolved");
  json.BeginArray();
  for (const auto& entity : entities)
    if (!entity.resolved) json.String(entity.id);
  json.EndArray();
  json.EndObject();
}

void PrintDeclarationsJson(const Options& options, const Session& session) {
  JsonWriter json;
  json.BeginObject();
  json.Key("modules");
  json.BeginArray();
  for (size_t i = 0; i < session.Modules().size(); ++i) {
    vorna::host::ModuleDeclarations declared = vorna::host::DescribeDeclarations(session.Modules()[i]);
    json.BeginObject();
    json.Field("module", ModuleNames(options)[i]);
    WriteDeclared(json, "interfaces", declared.interfaces);
    WriteDeclared(json, "objects", declared.objects);
    WriteDeclared(json, "resourceids", declared.resourceIds);
    json.EndObject();
  }
  json.EndArray();
  json.EndObject();
  std::printf("%s\n", json.Text().c_str());
}

void PrintModule(const Options& options, const Session& session) {
  for (size_t i = 0; i < session.Modules().size(); ++i) {
    std::printf("Loaded %s from %s\n", ModuleNames(options)[i].c_str(), options.moduleDirectory.c_str());
    PrintDeclarations(vorna::host::DescribeDeclarations(session.Modules()[i]));
    for (const auto& record : vorna::host::DescribeModule(session.Modules()[i])) {
      std::printf("module %s\n", record.id.c_str());
      if (!record.dependencies.empty()) PrintList("dependencies", record.dependencies);
      PrintList("translation units", record.translationUnits);
      if (!record.initStages.empty()) PrintList("init stages", record.initStages);
    }
  }
  std::printf("configuration variables:\n");
  for (const auto& variable : vorna::host::ListConfiguration())
    std::printf("  %s = %s  (%s)\n", variable.name.c_str(), variable.value ? "true" : "false", variable.help.c_str());
}

// The clip as movie.SUFFIX in directory, written as job says (options is how the command
// line says it), probed and laid out as sheet_SUFFIX.png. Skipped with a note while no
// saver writes that suffix.
bool ConvertClip(const std::string& clip, const std::string& directory, const std::string& suffix, ConvertJob job,
                 const std::string& options, Failure& failure) {
  if (FindSaverForSuffix(suffix).empty()) {
    std::printf("\nNo saver writes .%s files; the conversion to %s is left out.\n", suffix.c_str(), suffix.c_str());
    return true;
  }
  job.input = clip;
  job.output = (std::filesystem::path(directory) / ("movie." + suffix)).string();
  SheetRequest sheet;
  sheet.output = (std::filesystem::path(directory) / ("sheet_" + suffix + ".png")).string();
  std::printf("\n$ tessel convert %s %s%s\n", clip.c_str(), job.output.c_str(), options.c_str());
  if (!Convert(job, failure)) return false;
  std::printf("\n$ tessel probe %s\n", job.output.c_str());
  if (!PrintProbe(job.output, false, failure)) return false;
  std::printf("\n$ tessel sheet %s -o %s\n", job.output.c_str(), sheet.output.c_str());
  return WriteSheet(job.output, sheet, failure);
}

bool ShowClip(const std::string& clip, const std::string& directory, Failure& failure) {
  std::error_code error;
  std::filesystem::create_directories(directory, error);
  if (error) {
    failure = {kExitFailure, directory + ": " + error.message()};
    return false;
  }
  SheetRequest sheet;
  sheet.output = (std::filesystem::path(directory) / "sheet.png").string();
  SoundRequest sound;
  sound.output = (std::filesystem::path(directory) / "sound.wav").string();
  std::printf("\n$ tessel probe %s\n", clip.c_str());
  if (!PrintProbe(clip, false, failure)) return false;
  std::printf("\n$ tessel sheet %s -o %s\n", clip.c_str(), sheet.output.c_str());
  if (!WriteSheet(clip, sheet, failure)) return false;
  std::printf("\n$ tessel audio %s -o %s\n", clip.c_str(), sound.output.c_str());
  if (!WriteSound(clip, sound, failure)) return false;
  std::printf("\nLook at %s and listen to %s.\n", sheet.output.c_str(), sound.output.c_str());
  ConvertJob avi;
  avi.compressor = "mjpg";
  return ConvertClip(clip, directory, "mp4", {}, "", failure) &&
         ConvertClip(clip, directory, "wmv", {}, "", failure) &&
         ConvertClip(clip, directory, "avi", avi, " --compressor mjpg", failure);
}

}  // namespace

int RunDemo(const Options& options) {
  CommandArguments arguments;
  Failure failure;
  bool asJson = options.arguments == std::vector<std::string>{"--json"};
  bool withClip = !options.arguments.empty() && !asJson;
  if (withClip && !arguments.Parse(options.arguments, {{"-o"}, {}, 1, "CLIP -o DIR, --json, or nothing"}, failure))
    return Report(failure);
  if (withClip && !arguments.Has("-o")) return Report(UsageFailure("demo CLIP needs -o DIR"));
  Session session;
  if (!session.Open(options, failure)) return Report(failure);
  if (asJson) {
    PrintDeclarationsJson(options, session);
    return kExitOk;
  }
  PrintModule(options, session);
  if (withClip && !ShowClip(arguments.Positional(0), arguments.Text("-o"), failure)) return Report(failure);
  return kExitOk;
}

}  // namespace tessel::cli
