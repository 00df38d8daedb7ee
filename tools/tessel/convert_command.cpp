// tessel convert IN OUT [options]: writes IN as a movie through a saver of
// vorna.ImageSavers, with the host's export session. The saver comes from OUT's suffix
// or --saver; its settings from a settings file, the named options, --setting
// KEY=VALUE and the compressor chooser (export_settings.h). The movie goes to a
// temporary file beside OUT, which becomes OUT only when the saver has closed it
// without an error.
#include <cinttypes>
#include <cstdlib>
#include <cstdio>
#include <filesystem>
#include <optional>

#include "command_arguments.h"
#include "commands.h"
#include "compressor_settings.h"
#include "export_settings.h"
#include "host_text.h"
#include "interrupt_watch.h"
#include "json_writer.h"
#include "media_file.h"
#include "output_file.h"
#include "progress_line.h"
#include "saver_catalogue.h"
#include "session.h"

namespace tessel::cli {

namespace {

constexpr double MAX_FPS = 1000;

const ArgumentSpec CONVERT_ARGUMENTS{
    {"--saver", "--codec", "--bitrate", "--keyframes", "--quality", "--compressor", "--settings", "--audio-codec",
     "--audio-rate", "--audio-kbps", "--stream", "--from", "--to", "--fps"},
    {"--no-srgb", "--square", "--no-audio", "--choose", "--json"},
    2,
    "IN and OUT",
    {"--setting"}};

// Options that name a setting of the saver: their value is the setting's, as text.
struct NamedSetting {
  const char* option;
  const char* key;
};
const NamedSetting NAMED_SETTINGS[] = {{"--codec", "codec"},
                                       {"--keyframes", "keyframes"},
                                       {"--quality", "quality"},
                                       {"--audio-codec", "audio.codec"},
                                       {"--audio-rate", "audio.samplerate"},
                                       {"--audio-kbps", "audio.kilobitrate"}};

bool ReadSettings(const CommandArguments& arguments, ConvertJob& job, Failure& failure) {
  for (const NamedSetting& named : NAMED_SETTINGS)
    if (arguments.Has(named.option)) job.settings.emplace_back(named.key, arguments.Text(named.option));
  if (arguments.Has("--bitrate")) {
    int64_t bits = 0;
    if (!ParseScaled(arguments.Text("--bitrate"), bits) || bits <= 0) {
      failure = UsageFailure("--bitrate expects bits per second, such as 8000000 or 8M, got \"" +
                             arguments.Text("--bitrate") + "\"");
      return false;
    }
    job.settings.emplace_back("datarate", std::to_string(bits / 8));
  }
  if (arguments.Has("--no-srgb")) job.settings.emplace_back("disable srgb conversion", "true");
  for (const std::string& setting : arguments.Values("--setting")) {
    size_t eq = setting.find('=');
    if (eq == std::string::npos || eq == 0) {
      failure = UsageFailure("--setting expects KEY=VALUE, got \"" + setting + "\"");
      return false;
    }
    job.settings.emplace_back(setting.substr(0, eq), setting.substr(eq + 1));
  }
  return true;
}

// --quality is a number from 0 (the smallest file) to 1 (the best picture).
bool CheckQuality(const CommandArguments& arguments, Failure& failure) {
  if (!arguments.Has("--quality")) return true;
  const std::string& text = arguments.Text("--quality");
  char* end = nullptr;
  double quality = std::strtod(text.c_str(), &end);
  if (!text.empty() && *end == '\0' && quality >= 0 && quality <= 1) return true;
  failure = UsageFailure("--quality expects a number from 0 to 1, got \"" + text + "\"");
  return false;
}

bool ReadSource(const CommandArguments& arguments, ConvertJob& job, Failure& failure) {
  vorna::host::ExportRequest& request = job.request;
  int64_t stream = 0;
  double from = 0;
  double to = 0;
  double fps = 0;
  if (!arguments.Count("--stream", 0, 0, INT32_MAX, stream, failure) ||
      !arguments.Seconds("--from", 0, from, failure) || !arguments.Seconds("--to", 0, to, failure) ||
      !arguments.Seconds("--fps", 0, fps, failure))
    return false;
  if (arguments.Has("--to") && to <= from) {
    failure = UsageFailure("--to must lie after --from");
    return false;
  }
  if (arguments.Has("--fps") && (fps <= 0 || fps > MAX_FPS)) {
    failure = UsageFailure("--fps expects frames per second above 0, up to 1000");
    return false;
  }
  request.videoStream = stream;
  request.squarePixels = arguments.Has("--square");
  request.from = from;
  if (arguments.Has("--to")) request.to = to;
  if (arguments.Has("--fps")) request.fps = fps;
  request.withAudio = !arguments.Has("--no-audio");
  return true;
}

bool ReadConvertJob(const Options& options, ConvertJob& job, Failure& failure) {
  CommandArguments arguments;
  if (!arguments.Parse(options.arguments, CONVERT_ARGUMENTS, failure)) return false;
  job.input = arguments.Positional(0);
  job.output = arguments.Positional(1);
  job.saver = arguments.Text("--saver");
  job.json = arguments.Has("--json");
  job.compressor = arguments.Text("--compressor");
  job.settingsFile = arguments.Text("--settings");
  job.choose = arguments.Has("--choose");
  int64_t number = 0;
  for (const char* positive : {"--audio-rate", "--audio-kbps"})
    if (!arguments.Count(positive, 1, 1, INT32_MAX, number, failure)) return false;
  if (!arguments.Count("--keyframes", 0, 0, INT32_MAX, number, failure) || !CheckQuality(arguments, failure))
    return false;
  return ReadSettings(arguments, job, failure) && ReadSource(arguments, job, failure);
}

// The saver --saver names, or the one whose file format has OUT's suffix.
bool ChooseSaver(ConvertJob& job, Failure& failure) {
  if (!job.saver.empty()) return true;
  std::string suffix = std::filesystem::path(job.output).extension().string();
  if (!suffix.empty()) job.saver = FindSaverForSuffix(suffix.substr(1));
  if (job.saver.empty()) {
    failure = UsageFailure("no saver writes \"" + suffix + "\" files; give --saver ID (tessel formats lists them)");
    return false;
  }
  return true;
}

// The codec the movie gets: the one given, or the saver's default; none when the saver
// has no codec setting.
std::optional<std::string> CodecOf(const SaverInfo& saver, const ConvertJob& job) {
  for (const auto& [key, text] : job.settings)
    if (key == "codec") return text;
  const SettingInfo* codec = FindSetting(saver, "codec");
  return codec ? std::optional<std::string>(ToText(codec->defaultValue)) : std::nullopt;
}

// The exit code of a failed export and who it concerns: the input when it cannot be read
// or lacks what is asked of it, OUT otherwise.
Failure ExportFailure(const ConvertJob& job, vorna::ErrorWord error, bool opening) {
  std::string message = ErrorMessage(error);
  auto is = [error](vorna::ObjectUseRecord& errorClass) { return vorna::IsErrorOfClass(error, errorClass); };
  if (is(vorna::g_ThreadCancelledErrorObject))
    return {kExitCancelled, job.output + ": cancelled with Ctrl-C; nothing was written"};
  if (opening && is(vorna::g_IoErrorObject)) return {kExitNoReader, job.input + ": " + message};
  if (is(vorna::g_MediaStreamEOFErrorObject))
    return {kExitPastEnd, job.input + ": nothing at " + SecondsText(job.request.from) + ": " + message};
  if (is(vorna::g_UnsupportedArgumentErrorObject)) return {kExitFailure, job.input + ": " + message};
  if (is(vorna::g_IllegalArgumentErrorObject) || is(vorna::g_MediaSessionWrongTypeErrorObject))
    return {kExitRefused, job.output + ": " + message};
  return {kExitFailure, job.output + ": " + message};
}

void PrintSummary(const ConvertJob& job, const SaverInfo& saver, const vorna::host::ExportSummary& summary,
                  double elapsed, int64_t bytes) {
  std::optional<std::string> codec = CodecOf(saver, job);
  std::optional<std::string> compressor = CompressorOf(job.request.settings);
  if (job.json) {
    JsonWriter json;
    json.BeginObject();
    json.Field("output", job.output);
    json.Field("saver", saver.id);
    json.FieldOrNull("codec", codec);
    json.FieldOrNull("compressor", compressor);
    json.Key("frames");
    json.Integer(summary.frames);
    json.Key("seconds");
    json.Number(summary.movieSeconds);
    json.Key("elapsed");
    json.Number(elapsed);
    json.Key("bytes");
    json.Integer(bytes);
    json.EndObject();
    std::printf("%s\n", json.Text().c_str());
    return;
  }
  std::string written = (codec ? ", codec " + *codec : "") + (compressor ? ", compressor " + *compressor : "");
  std::printf("%s: %" PRId64 " frames, %.6g s of movie in %.3g s (saver %s%s), %" PRId64 " bytes\n",
              job.output.c_str(), int64_t(summary.frames), summary.movieSeconds, elapsed, saver.id.c_str(),
              written.c_str(), bytes);
}

bool Export(ConvertJob& job, const SaverInfo& saver, Failure& failure) {
  vorna::Url input;
  OutputFile output;
  if (!ResolveInput(job.input, input, failure) || !output.Prepare(job.output, failure)) return false;
  job.request.saver = saver.id;
  if (job.request.output.Set(output.TemporaryPath().c_str()).IsError()) {
    failure = UsageFailure(job.output + ": not a path");
    return false;
  }
  auto opened = vorna::host::ExportSession::Open(input, job.request);
  if (opened.IsError()) {
    failure = ExportFailure(job, opened.GetError(), true);
    return false;
  }
  InterruptWatch interrupt;
  ProgressLine line;
  auto summary = opened.GetValue()->Run([&](const vorna::host::ExportProgress& progress) {
    line.Update(progress);
    return !interrupt.Requested();
  });
  line.Finish();
  double elapsed = line.ElapsedSeconds();
  if (summary.IsError()) {
    failure = ExportFailure(job, summary.GetError(), false);
    return false;
  }
  if (!output.Commit(failure)) return false;
  PrintSummary(job, saver, summary.GetValue(), elapsed, output.Bytes());
  return true;
}

}  // namespace

bool Convert(ConvertJob& job, Failure& failure) {
  SaverInfo saver;
  if (!ChooseSaver(job, failure) || !DescribeSaver(job.saver, nullptr, saver, failure) ||
      !SettleSettings(saver, job, failure))
    return false;
  return Export(job, saver, failure);
}

int RunConvert(const Options& options) {
  // The session outlives the job: the job's settings hold values of the host's types.
  Session session;
  ConvertJob job;
  Failure failure;
  if (!ReadConvertJob(options, job, failure) || !session.Open(options, failure) || !Convert(job, failure))
    return Report(failure);
  return kExitOk;
}

}  // namespace tessel::cli
