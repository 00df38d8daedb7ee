// tessel probe FILE [--json]: the file formats that claim the file, and each stream
// with the formats it can be delivered in.
#include <cinttypes>
#include <cstdio>

#include "command_arguments.h"
#include "commands.h"
#include "json_writer.h"
#include "media_file.h"
#include "session.h"
#include "stream_info.h"

namespace tessel::cli {

namespace {

void WriteFormatJson(JsonWriter& json, const FormatInfo& format) {
  json.BeginObject();
  json.Key("key");
  json.Integer(format.key);
  json.FieldOrNull("pixelformat", format.pixelFormat);
  json.FieldOrNull("width", format.width);
  json.FieldOrNull("height", format.height);
  json.FieldOrNull("aspectratio", format.aspectRatio);
  json.FieldOrNull("fps", format.fps);
  json.FieldOrNull("starttime", format.startTime);
  json.FieldOrNull("duration", format.duration);
  json.FieldOrNull("channelcount", format.channelCount);
  json.FieldOrNull("bitsperchannel", format.bitsPerChannel);
  json.FieldOrNull("samplerate", format.sampleRate);
  json.EndObject();
}

std::string ProbeJson(MediaFile& file, const std::vector<StreamInfo>& streams) {
  JsonWriter json;
  json.BeginObject();
  json.Field("url", file.UrlText());
  json.Key("detected");
  json.BeginArray();
  for (const std::string& id : file.Reading().GetDetectedFormats()) json.String(id);
  json.EndArray();
  json.Field("handler", file.Reading().GetHandler());
  json.Key("streams");
  json.BeginArray();
  for (const StreamInfo& stream : streams) {
    json.BeginObject();
    json.Key("index");
    json.Integer(stream.index);
    json.Field("kind", KindName(stream.kind));
    json.Key("formats");
    json.BeginArray();
    for (const FormatInfo& format : stream.formats) WriteFormatJson(json, format);
    json.EndArray();
    json.EndObject();
  }
  json.EndArray();
  json.EndObject();
  return json.Text();
}

template <typename T>
std::string Formatted(const char* format, T value) {
  char text[96];
  std::snprintf(text, sizeof text, format, value);
  return text;
}

// One line per format, with only what the format has.
std::string DescribeFormatLine(const FormatInfo& f) {
  std::vector<std::string> parts;
  if (f.pixelFormat) parts.push_back(*f.pixelFormat);
  if (f.width && f.height) parts.push_back(std::to_string(*f.width) + "x" + std::to_string(*f.height));
  if (f.aspectRatio) parts.push_back(Formatted("pixel aspect %.6g", *f.aspectRatio));
  if (f.fps) parts.push_back(Formatted("%.6g fps", *f.fps));
  if (f.startTime) parts.push_back(Formatted("starts at %.6g s", *f.startTime));
  if (f.duration) parts.push_back(Formatted("%.6g s long", *f.duration));
  if (f.channelCount) parts.push_back(std::to_string(*f.channelCount) + " channels");
  if (f.bitsPerChannel) parts.push_back(std::to_string(*f.bitsPerChannel) + " bits");
  if (f.sampleRate) parts.push_back(Formatted("%.6g Hz", *f.sampleRate));
  std::string line;
  for (const std::string& part : parts) line += (line.empty() ? "" : ", ") + part;
  return line;
}

void PrintProbeText(MediaFile& file, const std::vector<StreamInfo>& streams) {
  std::printf("%s\n  read by: %s\n  detected by:", file.UrlText().c_str(), file.Reading().GetHandler().c_str());
  for (const std::string& id : file.Reading().GetDetectedFormats()) std::printf(" %s", id.c_str());
  std::printf("\n");
  for (const StreamInfo& stream : streams) {
    std::printf("  stream %" PRId64 ": %s\n", stream.index, KindName(stream.kind));
    for (const FormatInfo& format : stream.formats)
      std::printf("    format %" PRId64 ": %s\n", format.key, DescribeFormatLine(format).c_str());
  }
}

}  // namespace

bool PrintProbe(const std::string& path, bool json, Failure& failure) {
  MediaFile file;
  if (!file.Open(path, failure)) return false;
  std::vector<StreamInfo> streams = DescribeStreams(file.Reading());
  if (json) {
    std::printf("%s\n", ProbeJson(file, streams).c_str());
  } else {
    PrintProbeText(file, streams);
  }
  return true;
}

int RunProbe(const Options& options) {
  CommandArguments arguments;
  Failure failure;
  Session session;
  if (!arguments.Parse(options.arguments, {{}, {"--json"}, 1, "one FILE"}, failure) ||
      !session.Open(options, failure) || !PrintProbe(arguments.Positional(0), arguments.Has("--json"), failure))
    return Report(failure);
  return kExitOk;
}

}  // namespace tessel::cli
