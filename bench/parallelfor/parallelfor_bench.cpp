// A 1920x1080 BGRX frame converted row by row into an RGBA image through
// ParallelFor::Dynamic, as the module's pixel transfers do it, reported as bytes of the
// destination per second; beside it one single-thread memcpy of the same bytes. The
// host runs with its default pool, one worker per core.
#include "vorna/translationunit.h"

#include <benchmark/benchmark.h>

#include <cstring>
#include <vector>

#include "vorna/parallelfordynamic.h"
#include "vorna/pixel/convertpixels.h"
#include "vorna/pixel/pixelformatcatalogue.h"
#include "vorna_host.h"

VORNA_MODULE("net.vorna.bench.parallelfor", "net.vorna.core.framework");

namespace {

using namespace vorna;

constexpr Int WIDTH = 1920;
constexpr Int HEIGHT = 1080;
constexpr Int FRAME_BYTES = WIDTH * HEIGHT * 4;

std::vector<uint8_t> MakeFrame() {
  std::vector<uint8_t> frame(FRAME_BYTES);
  for (size_t i = 0; i < frame.size(); ++i) frame[i] = uint8_t(i * 7);
  return frame;
}

void BM_Memcpy(benchmark::State& state) {
  const std::vector<uint8_t> src = MakeFrame();
  std::vector<uint8_t> dst(FRAME_BYTES);
  for (auto _ : state) {
    std::memcpy(dst.data(), src.data(), dst.size());
    benchmark::DoNotOptimize(dst.data());
  }
  state.SetBytesProcessed(state.iterations() * FRAME_BYTES);
}

// The argument is the loop's threadCount: 0 as many jobs as the pool runs, 1 in line.
void BM_ConvertRows(benchmark::State& state) {
  const pixel::PixelFormat& from = *pixel::FindPixelFormat("vorna.PixelFormats.BGRX:u8");
  const pixel::ConvertPixelsFunc convert =
      pixel::GetConvertFunc(from, *pixel::FindPixelFormat("vorna.PixelFormats.RGBA:u8"));
  const std::vector<uint8_t> src = MakeFrame();
  std::vector<uint8_t> dst(FRAME_BYTES);
  auto row = [&](Int y) -> Result<void> {
    convert(dst.data() + y * WIDTH * 4, src.data() + y * WIDTH * 4, WIDTH, from.bitsPerPixel);
    return OK;
  };
  for (auto _ : state) {
    if (ParallelFor::Dynamic(Int(0), HEIGHT, row, state.range(0)).IsError()) state.SkipWithError("loop failed");
    benchmark::DoNotOptimize(dst.data());
  }
  state.SetBytesProcessed(state.iterations() * FRAME_BYTES);
}

}  // namespace

BENCHMARK(BM_Memcpy);
BENCHMARK(BM_ConvertRows)->Arg(0)->Arg(1)->UseRealTime();

int main(int argc, char** argv) {
  if (host::StartWithClient({}).IsError()) return 1;
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  host::Stop();
  return 0;
}
