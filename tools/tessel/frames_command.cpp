// tessel frames FILE (--every SECONDS | --count N) -o DIR [--square] [--stream N]:
// frames as numbered PNG files, DIR/frame_0001.png on.
#include <cstdio>
#include <cmath>
#include <filesystem>

#include "command_arguments.h"
#include "commands.h"
#include "frame_times.h"
#include "png_writer.h"
#include "session.h"

namespace tessel::cli {

namespace {

constexpr int64_t MAX_FRAMES = 100000;

const ArgumentSpec FRAMES_ARGUMENTS{{"--every", "--count", "-o", "--stream"}, {"--square"}, 1, "one FILE"};

struct FramesJob {
  std::string file;
  std::string directory;
  double every = 0;  // 0: count frames spread over the movie
  int64_t count = 0;
  FrameRequest request;
};

bool ReadFramesJob(const Options& options, FramesJob& job, Failure& failure) {
  CommandArguments arguments;
  if (!arguments.Parse(options.arguments, FRAMES_ARGUMENTS, failure)) return false;
  if (arguments.Has("--every") == arguments.Has("--count") || !arguments.Has("-o")) {
    failure = UsageFailure("frames needs either --every SECONDS or --count N, and -o DIR");
    return false;
  }
  job.file = arguments.Positional(0);
  job.directory = arguments.Text("-o");
  job.request.squarePixels = arguments.Has("--square");
  if (!arguments.Seconds("--every", 0, job.every, failure) ||
      !arguments.Count("--count", 0, 1, MAX_FRAMES, job.count, failure) ||
      !arguments.Count("--stream", 0, 0, INT32_MAX, job.request.videoStream, failure))
    return false;
  if (arguments.Has("--every") && job.every <= 0) {
    failure = UsageFailure("--every expects more than 0 seconds");
    return false;
  }
  return true;
}

std::string FramePath(const std::string& directory, size_t number) {
  char name[32];
  std::snprintf(name, sizeof name, "frame_%04zu.png", number);
  return (std::filesystem::path(directory) / name).string();
}

bool SaveFrame(FrameGrabber& grabber, double seconds, const std::string& path, Failure& failure) {
  vorna::host::ImageFrame frame;
  if (!grabber.Grab(seconds, frame, failure) || !WritePng(path, FromFrame(frame), failure.message)) return false;
  std::printf("%s  %.3f s\n", path.c_str(), frame.sampleTime.value_or(seconds));
  return true;
}

// Every `every` seconds from 0 until the stream ends; the end is no failure once a
// frame was written.
bool SaveEvery(FrameGrabber& grabber, const FramesJob& job, Failure& failure) {
  double length = grabber.Format().duration.value_or(HUGE_VAL);
  for (int64_t i = 0; i < MAX_FRAMES && double(i) * job.every < length; ++i) {
    if (SaveFrame(grabber, double(i) * job.every, FramePath(job.directory, size_t(i + 1)), failure)) continue;
    return i > 0 && failure.exitCode == kExitPastEnd;
  }
  return true;
}

bool SaveFrames(const FramesJob& job, Failure& failure) {
  std::error_code error;
  std::filesystem::create_directories(job.directory, error);
  if (error) {
    failure = {kExitFailure, job.directory + ": " + error.message()};
    return false;
  }
  MediaFile file;
  FrameGrabber grabber;
  if (!file.Open(job.file, failure) || !grabber.Open(file, job.request, failure)) return false;
  if (job.every > 0) return SaveEvery(grabber, job, failure);
  double duration = 0;
  if (!StreamDuration(grabber.Format(), job.file, duration, failure)) return false;
  std::vector<double> times = SpreadTimes(duration, job.count);
  for (size_t i = 0; i < times.size(); ++i)
    if (!SaveFrame(grabber, times[i], FramePath(job.directory, i + 1), failure)) return false;
  return true;
}

}  // namespace

int RunFrames(const Options& options) {
  FramesJob job;
  Failure failure;
  Session session;
  if (!ReadFramesJob(options, job, failure) || !session.Open(options, failure) || !SaveFrames(job, failure))
    return Report(failure);
  return kExitOk;
}

}  // namespace tessel::cli
