// tessel sheet FILE -o SHEET.png [--columns C] [--count N] [--stream N]: a contact sheet
// of N frames spread over the movie, each labelled with its time, for looking at a
// movie rather than reading about it. Frames are taken with square pixels when the
// stream offers them, so that the pictures look as the movie is shown.
#include <cstdio>

#include "command_arguments.h"
#include "commands.h"
#include "contact_sheet.h"
#include "frame_times.h"
#include "png_writer.h"
#include "session.h"

namespace tessel::cli {

namespace {

constexpr int64_t CELL_WIDTH = 240;
constexpr int64_t MAX_CELLS = 1000;

const ArgumentSpec SHEET_ARGUMENTS{{"-o", "--columns", "--count", "--stream"}, {}, 1, "one FILE"};

bool ReadSheetRequest(const Options& options, std::string& file, SheetRequest& request, Failure& failure) {
  CommandArguments arguments;
  if (!arguments.Parse(options.arguments, SHEET_ARGUMENTS, failure)) return false;
  if (!arguments.Has("-o")) {
    failure = UsageFailure("sheet needs -o SHEET.png");
    return false;
  }
  file = arguments.Positional(0);
  request.output = arguments.Text("-o");
  return arguments.Count("--columns", request.columns, 1, 100, request.columns, failure) &&
         arguments.Count("--count", request.count, 1, MAX_CELLS, request.count, failure) &&
         arguments.Count("--stream", 0, 0, INT32_MAX, request.videoStream, failure);
}

}  // namespace

bool WriteSheet(const std::string& path, const SheetRequest& request, Failure& failure) {
  MediaFile file;
  FrameGrabber grabber;
  double duration = 0;
  if (!file.Open(path, failure) || !grabber.Open(file, {request.videoStream, true}, failure) ||
      !StreamDuration(grabber.Format(), path, duration, failure))
    return false;
  std::vector<SheetCell> cells;
  for (double seconds : SpreadTimes(duration, request.count)) {
    vorna::host::ImageFrame frame;
    if (!grabber.Grab(seconds, frame, failure)) return false;
    cells.push_back({FromFrame(frame), ClockLabel(frame.sampleTime.value_or(seconds))});
  }
  RgbaImage sheet = ComposeSheet(cells, request.columns, CELL_WIDTH);
  if (!WritePng(request.output, sheet, failure.message)) return false;
  std::printf("%s: %zu frames of %s, %lldx%lld\n", request.output.c_str(), cells.size(), path.c_str(),
              (long long)sheet.width, (long long)sheet.height);
  return true;
}

int RunSheet(const Options& options) {
  std::string file;
  SheetRequest request;
  Failure failure;
  Session session;
  if (!ReadSheetRequest(options, file, request, failure) || !session.Open(options, failure) ||
      !WriteSheet(file, request, failure))
    return Report(failure);
  return kExitOk;
}

}  // namespace tessel::cli
