// The commands of the tessel command line. Each Run function takes the parsed line and
// returns the process's exit code (failure.h). The pieces below them work on a host
// that a Session has started; the demo strings them together.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "cli_options.h"
#include "failure.h"
#include "frame_grabber.h"
#include "vorna_export.h"

namespace tessel::cli {

int RunDemo(const Options& options);
int RunProbe(const Options& options);
int RunFrame(const Options& options);
int RunFrames(const Options& options);
int RunSheet(const Options& options);
int RunAudio(const Options& options);
int RunFormats(const Options& options);
int RunConvert(const Options& options);
int RunDescribe(const Options& options);
int RunCompressors(const Options& options);

// Prints what the file holds, as text or as one JSON object.
bool PrintProbe(const std::string& file, bool json, Failure& failure);

struct SheetRequest {
  std::string output;
  int64_t columns = 4;
  int64_t count = 12;
  int64_t videoStream = 0;
};
// Writes a contact sheet of count frames spread over the movie.
bool WriteSheet(const std::string& file, const SheetRequest& request, Failure& failure);

struct ConvertJob {
  std::string input;
  std::string output;
  std::string saver;  // empty: the one of OUT's suffix
  std::vector<std::pair<std::string, std::string>> settings;  // key and value text, in the order given
  std::string compressor;    // --compressor CODE; empty: none
  std::string settingsFile;  // --settings FILE; empty: none
  bool choose = false;       // --choose: the saver's compressor chooser, on the terminal
  vorna::host::ExportRequest request;  // the source; saver, output and settings are filled in
  bool json = false;
};
// Writes the movie and prints what it wrote, as tessel convert does.
bool Convert(ConvertJob& job, Failure& failure);

struct SoundRequest {
  std::string output;
  int64_t audioStream = 0;  // counts the audio streams only, from 0
};
// Writes the sound of an audio stream as a WAV file and prints what it wrote.
bool WriteSound(const std::string& file, const SoundRequest& request, Failure& failure);

}  // namespace tessel::cli
