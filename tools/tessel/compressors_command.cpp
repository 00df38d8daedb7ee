// tessel compressors [--json]: the video compressors the platform offers to AVI files,
// each with its four-character code (what --compressor takes), its name and what it
// can be told: quality, key frames (the distance between them), data rate.
#include <cstdio>

#include "command_arguments.h"
#include "commands.h"
#include "compressor_list.h"
#include "four_character_code.h"
#include "json_writer.h"

namespace tessel::cli {

namespace {

void PrintText(const std::vector<TesselCompressor>& compressors) {
  std::printf("video compressors for AVI (--compressor CODE):\n");
  for (const TesselCompressor& compressor : compressors) {
    std::string supports = SupportsText(compressor);
    std::printf("  %-5s %-32s %s\n", FourCharacterText(compressor.fccHandler).c_str(), compressor.name,
                supports.empty() ? "-" : supports.c_str());
  }
}

void PrintJson(const std::vector<TesselCompressor>& compressors) {
  JsonWriter json;
  json.BeginObject();
  json.Key("compressors");
  json.BeginArray();
  for (const TesselCompressor& compressor : compressors) {
    json.BeginObject();
    json.Field("code", FourCharacterText(compressor.fccHandler));
    json.Field("name", compressor.name);
    json.Key("quality");
    json.Bool(SupportsQuality(compressor));
    json.Key("keyframes");
    json.Bool(SupportsKeyFrames(compressor));
    json.Key("datarate");
    json.Bool(SupportsDataRate(compressor));
    json.EndObject();
  }
  json.EndArray();
  json.EndObject();
  std::printf("%s\n", json.Text().c_str());
}

}  // namespace

int RunCompressors(const Options& options) {
  CommandArguments arguments;
  Failure failure;
  if (!arguments.Parse(options.arguments, {{}, {"--json"}, 0, "no arguments"}, failure)) return Report(failure);
  std::vector<TesselCompressor> compressors = PlatformCompressors();
  arguments.Has("--json") ? PrintJson(compressors) : PrintText(compressors);
  return kExitOk;
}

}  // namespace tessel::cli
