// tessel frame FILE --at SECONDS [--square] [--stream N] -o OUT.png [--json]: the frame
// the module delivers for a time, as a PNG, with the properties it came with.
#include <cinttypes>
#include <cstdio>

#include "command_arguments.h"
#include "commands.h"
#include "json_writer.h"
#include "png_writer.h"
#include "session.h"

namespace tessel::cli {

namespace {

const ArgumentSpec FRAME_ARGUMENTS{{"--at", "--stream", "-o"}, {"--square", "--json"}, 1, "one FILE"};

void PrintFrame(const std::string& output, const vorna::host::ImageFrame& frame, bool json) {
  if (json) {
    JsonWriter writer;
    writer.BeginObject();
    writer.Field("output", output);
    writer.FieldOrNull("sampletime", frame.sampleTime);
    writer.FieldOrNull("sampleduration", frame.sampleDuration);
    writer.FieldOrNull("skippedframes", frame.skippedFrames);
    writer.FieldOrNull("width", std::optional<int64_t>(frame.width));
    writer.FieldOrNull("height", std::optional<int64_t>(frame.height));
    writer.EndObject();
    std::printf("%s\n", writer.Text().c_str());
    return;
  }
  std::printf("%s: %" PRId64 "x%" PRId64, output.c_str(), frame.width, frame.height);
  if (frame.sampleTime) std::printf(", frame at %.6g s", *frame.sampleTime);
  if (frame.sampleDuration) std::printf(" lasting %.6g s", *frame.sampleDuration);
  if (frame.skippedFrames) std::printf(", %" PRId64 " frames passed over", *frame.skippedFrames);
  std::printf("\n");
}

struct FrameJob {
  std::string file;
  std::string output;
  double seconds = 0;
  FrameRequest request;
  bool json = false;
};

bool ReadFrameJob(const Options& options, FrameJob& job, Failure& failure) {
  CommandArguments arguments;
  if (!arguments.Parse(options.arguments, FRAME_ARGUMENTS, failure)) return false;
  if (!arguments.Has("--at") || !arguments.Has("-o")) {
    failure = UsageFailure("frame needs --at SECONDS and -o OUT.png");
    return false;
  }
  job.file = arguments.Positional(0);
  job.output = arguments.Text("-o");
  job.request.squarePixels = arguments.Has("--square");
  job.json = arguments.Has("--json");
  return arguments.Seconds("--at", 0, job.seconds, failure) &&
         arguments.Count("--stream", 0, 0, INT32_MAX, job.request.videoStream, failure);
}

bool WriteFrame(const FrameJob& job, Failure& failure) {
  MediaFile file;
  FrameGrabber grabber;
  vorna::host::ImageFrame frame;
  if (!file.Open(job.file, failure) || !grabber.Open(file, job.request, failure) ||
      !grabber.Grab(job.seconds, frame, failure))
    return false;
  if (!WritePng(job.output, FromFrame(frame), failure.message)) return false;
  PrintFrame(job.output, frame, job.json);
  return true;
}

}  // namespace

int RunFrame(const Options& options) {
  FrameJob job;
  Failure failure;
  Session session;
  if (!ReadFrameJob(options, job, failure) || !session.Open(options, failure) || !WriteFrame(job, failure))
    return Report(failure);
  return kExitOk;
}

}  // namespace tessel::cli
