// Frames of a clip fetched through the module into an RGBA host image, the way an
// application asks for them: by time, through the host's reading session.
//   module_fetch sequential CLIP FPS FRAMES   every frame at its sample time, in order
//   module_fetch random CLIP FPS T1 T2 ...    one fetch per time, in the order given
// Prints one line per fetch in random mode: the time, the milliseconds it took and the
// frame number read from the picture's frame code; in sequential mode the frame count
// and how many of the checked frames carried the wrong code.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "frame_code.h"
#include "vorna/datatypes.h"
#include "vorna_host.h"
#include "vorna_session.h"
#include "vorna_sinks.h"

namespace {

using Clock = std::chrono::steady_clock;

int FrameNumberOf(const vorna::host::ImageFrame& frame) {
  auto luma = [&](int x, int y) {
    const uint8_t* p = frame.pixels.data() + y * frame.bytesPerLine + x * 4;
    return (299 * p[0] + 587 * p[1] + 114 * p[2]) / 1000;
  };
  return tessel::fixtures::ReadFrameCode(luma, int(frame.width), int(frame.height));
}

// Read in place: a copy of the frame is no part of fetching it.
int FrameNumberOf(const vorna::host::ImageSink& sink) {
  int number = -1;
  sink.VisitFrame([&](const vorna::host::ImageFrame& frame) { number = FrameNumberOf(frame); });
  return number;
}

struct Reader {
  std::unique_ptr<vorna::host::ReadingSession> session;
  std::shared_ptr<vorna::host::ImageSink> sink;
};

bool Open(const std::string& path, Reader& reader) {
  vorna::Url url;
  if (url.Set(path.c_str()).IsError()) return false;
  auto opened = vorna::host::ReadingSession::Open(url);
  if (opened.IsError()) return false;
  reader.session = std::move(opened.GetValue());
  const auto& streams = reader.session->GetStreams();
  if (streams.GetCount() == 0) return false;
  reader.sink = vorna::host::AttachImageSink(streams[0], "vorna.PixelFormats.RGBA:u8");
  return reader.sink && !reader.session->Subscribe(0, vorna::MakeData(vorna::Int64(1))).IsError() &&
         !reader.session->PrepareExecute().IsError();
}

bool Fetch(Reader& reader, double seconds) {
  return !reader.session->Execute(vorna::TimeValue(seconds), vorna::MEDIASESSIONFLAGS_FORCE).IsError();
}

// Every CHECK_EVERY-th frame is read back and its code checked.
constexpr int CHECK_EVERY = 10;

int Sequential(Reader& reader, double fps, int frames) {
  int wrong = 0;
  for (int i = 0; i < frames; ++i) {
    if (!Fetch(reader, i / fps)) return std::fprintf(stderr, "fetch of frame %d failed\n", i), 1;
    if (i % CHECK_EVERY == 0 && FrameNumberOf(*reader.sink) != i % 1024) ++wrong;
  }
  std::printf("%d %d\n", frames, wrong);
  return 0;
}

int Random(Reader& reader, const std::vector<double>& times) {
  for (double t : times) {
    auto start = Clock::now();
    if (!Fetch(reader, t)) return std::fprintf(stderr, "fetch at %.4f failed\n", t), 1;
    double ms = std::chrono::duration<double, std::milli>(Clock::now() - start).count();
    std::printf("%.6f %.3f %d\n", t, ms, FrameNumberOf(*reader.sink));
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 5) return std::fprintf(stderr, "usage: module_fetch sequential|random CLIP FPS ...\n"), 2;
  std::string mode = argv[1];
  double fps = std::atof(argv[3]);
  if (vorna::host::StartWithClient({TESSEL_MODULE_DIR}).IsError()) return std::fprintf(stderr, "no host\n"), 1;
  auto module = vorna::host::LoadModule("net.vorna.tessel_reel");
  if (module.IsError()) return std::fprintf(stderr, "module not loaded\n"), 1;
  int status = 1;
  {
    Reader reader;
    if (!Open(argv[2], reader)) {
      std::fprintf(stderr, "cannot read %s\n", argv[2]);
    } else if (mode == "sequential") {
      status = Sequential(reader, fps, std::atoi(argv[4]));
    } else {
      std::vector<double> times;
      for (int i = 4; i < argc; ++i) times.push_back(std::atof(argv[i]));
      status = Random(reader, times);
    }
  }
  vorna::host::UnloadModule(module.GetValue());
  vorna::host::Stop();
  return status;
}
