// tessel: the command line of the media module, run through the host.
#include <cstdio>
#include <cstring>

#include "cli_options.h"
#include "commands.h"

namespace {

constexpr const char* USAGE =
    "usage: tessel [--set NAME=VALUE]... [--log] COMMAND [ARGS]\n"
    "\n"
    "commands:\n"
    "  probe FILE [--json]          the file formats that claim FILE, its streams and their formats\n"
    "  frame FILE --at SECONDS -o OUT.png [--square] [--stream N] [--json]\n"
    "                               the frame for a time as a PNG; --square: square pixels,\n"
    "                               --stream N: the N-th video stream (from 0)\n"
    "  frames FILE (--every SECONDS | --count N) -o DIR [--square] [--stream N]\n"
    "                               frames as DIR/frame_0001.png, ...\n"
    "  sheet FILE -o SHEET.png [--columns C] [--count N] [--stream N]\n"
    "                               a contact sheet of N frames (12) in C columns (4), with times\n"
    "  audio FILE -o OUT.wav [--stream N]\n"
    "                               the sound of the N-th audio stream as a WAV file\n"
    "  convert IN OUT [options]     IN written as a movie by the saver of OUT's suffix (or --saver ID)\n"
    "    settings: --codec NAME, --bitrate BITS (bits per second, k and M allowed), --keyframes N,\n"
    "              --quality Q (0 to 1), --audio-codec aac|mp3, --audio-rate HZ, --audio-kbps K,\n"
    "              --no-srgb, --setting KEY=VALUE (any setting the saver describes)\n"
    "    AVI:      --compressor CODE (see compressors), --choose (the compressor chooser, on the\n"
    "              terminal)\n"
    "    --settings FILE: settings kept in a JSON file: read first (the options win), written back\n"
    "    source:   --stream N, --square, --from S, --to S, --fps F, --no-audio\n"
    "    --json:   one summary object at the end; Ctrl-C stops between frames\n"
    "  describe SAVER [--audio-codec C] [--json]\n"
    "                               a saver's capabilities and settings\n"
    "  compressors [--json]         the video compressors for AVI: code, name, what each supports\n"
    "  formats [--json]             the registered file formats, handlers and savers, with suffixes\n"
    "  demo [CLIP -o DIR | --json]  what the module registered and how much of what it declares\n"
    "                               the host resolved; with a clip: probe, sheet, sound, and the\n"
    "                               clip converted to MP4, WMV and AVI; --json: the declarations\n"
    "  help                         this text\n"
    "\n"
    "options for every command:\n"
    "  --set NAME=VALUE             set a configuration variable (true, false, 1, 0)\n"
    "  --log                        show the module's diagnostic lines (on stderr)\n"
    "\n"
    "exit codes: 0 done, 1 failed, 2 no such file, 3 no reader for the file,\n"
    "            4 time past the end of the stream, 5 module not loaded,\n"
    "            6 the saver refused the export, 7 the compressor choice was cancelled,\n"
    "            64 bad usage, 130 stopped with Ctrl-C\n";

struct Command {
  const char* name;
  int (*run)(const tessel::cli::Options& options);
};

constexpr Command COMMANDS[] = {
    {"probe", tessel::cli::RunProbe},   {"frame", tessel::cli::RunFrame},
    {"frames", tessel::cli::RunFrames}, {"sheet", tessel::cli::RunSheet},
    {"audio", tessel::cli::RunAudio},   {"formats", tessel::cli::RunFormats},
    {"demo", tessel::cli::RunDemo},     {"convert", tessel::cli::RunConvert},
    {"describe", tessel::cli::RunDescribe}, {"compressors", tessel::cli::RunCompressors},
};

}  // namespace

int main(int argc, char** argv) {
  tessel::cli::Options options;
  std::string error;
  if (!tessel::cli::ParseOptions(argc, argv, options, error)) {
    std::fprintf(stderr, "tessel: %s\n%s", error.c_str(), USAGE);
    return tessel::cli::kExitUsage;
  }
  for (const Command& command : COMMANDS)
    if (options.command == command.name) return command.run(options);
  if (options.command == "help") {
    std::fputs(USAGE, stdout);
    return tessel::cli::kExitOk;
  }
  if (options.command.empty()) {
    std::fputs(USAGE, stderr);
  } else {
    std::fprintf(stderr, "tessel: unknown command %s\n%s", options.command.c_str(), USAGE);
  }
  return tessel::cli::kExitUsage;
}
