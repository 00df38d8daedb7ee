// Frames of the host's test-pattern source written by a saver of the media module, the
// way tessel convert drives an export: 1920x1080 at 30 fps, 8 Mbit/s, a key frame every
// 60 frames, no sound. Prints the frames written and the seconds the export took.
// Usage: export_pattern OUT [FRAMES] [SAVER]   (300 frames, saver mp4)
#include "vorna/translationunit.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "vorna/errorbase.h"
#include "vorna/resourceid.h"
#include "vorna_export.h"
#include "vorna_host.h"

VORNA_MODULE("net.vorna.bench.export", "net.vorna.core.framework");

namespace {

VORNA_DEFINE_RESOURCE_ID(g_datarate, "datarate");
VORNA_DEFINE_RESOURCE_ID(g_keyframes, "keyframes");
VORNA_DEFINE_OBJECT_USE(g_bytesValueType, "vorna.DataTypes:vorna.BytesValue");

int Fail(const char* what, vorna::ErrorWord error) {
  vorna::Result<vorna::CString> message = vorna::ErrorOf(error).GetMessage().GetCString();
  std::fprintf(stderr, "export_pattern: %s: %s\n", what, message.IsError() ? "?" : message.GetValue().GetCString());
  return 1;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2 || argc > 4) {
    std::fprintf(stderr, "usage: export_pattern OUT [FRAMES] [SAVER]\n");
    return 64;
  }
  long frames = argc > 2 ? std::atol(argv[2]) : 300;
  if (vorna::host::StartWithClient({TESSEL_MODULE_DIR}).IsError()) return 5;
  vorna::Result<vorna::host::LoadedModule*> module = vorna::host::LoadModule("net.vorna.tessel_reel");
  if (module.IsError()) return Fail("loading the module", module.GetError());

  vorna::host::TestPatternOptions pattern;
  pattern.width = 1920;
  pattern.height = 1080;
  pattern.fps = 30;
  pattern.duration = double(frames) / pattern.fps;
  pattern.toneHertz = 0;
  vorna::host::ExportRequest request;
  request.saver = argc > 3 ? argv[3] : "mp4";
  vorna::Int64 bytesPerSecond = 1000000;
  vorna::Data datarate;
  datarate.SetValue(vorna::GetDataType(g_bytesValueType), &bytesPerSecond);
  if (request.output.Set(argv[1]).IsError() || request.settings.Set(g_datarate, datarate).IsError() ||
      request.settings.Set(g_keyframes, vorna::MakeData(vorna::Int32(60))).IsError())
    return 64;

  auto start = std::chrono::steady_clock::now();
  int status = 0;
  {
    auto session = vorna::host::ExportSession::OpenTestPattern(pattern, request);
    if (session.IsError()) {
      status = Fail("opening the export", session.GetError());
    } else if (auto summary = session.GetValue()->Run(nullptr); summary.IsError()) {
      status = Fail("exporting", summary.GetError());
    } else {
      double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
      std::printf("%ld %.3f %.1f\n", long(summary.GetValue().frames), seconds, double(summary.GetValue().frames) / seconds);
    }
  }
  vorna::host::UnloadModule(module.GetValue());
  vorna::host::Stop();
  return status;
}
