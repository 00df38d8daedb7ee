// Converting a 1920x1080 frame row by row, reported as bytes of the destination frame per
// second, next to one memcpy of a frame of the same size.
#include <benchmark/benchmark.h>

#include <cstring>
#include <vector>

#include "vorna/pixel/convertpixels.h"
#include "vorna/pixel/pixelformatcatalogue.h"

namespace {

using namespace vorna::pixel;

constexpr int64_t kWidth = 1920;
constexpr int64_t kHeight = 1080;

struct Frame {
  std::vector<uint8_t> bytes;
  int64_t pitch;
};

Frame MakeFrame(const PixelFormat& format) {
  const int64_t pitch = BytesPerLine(format, kWidth, 32);
  Frame frame{std::vector<uint8_t>(static_cast<size_t>(pitch * kHeight)), pitch};
  for (size_t i = 0; i < frame.bytes.size(); ++i) frame.bytes[i] = static_cast<uint8_t>(i * 7);
  return frame;
}

void ReportFrames(benchmark::State& state, int64_t frameBytes) {
  state.SetBytesProcessed(state.iterations() * frameBytes);
}

void BM_Memcpy(benchmark::State& state) {
  const Frame src = MakeFrame(*FindPixelFormat("vorna.PixelFormats.RGBA:u8"));
  std::vector<uint8_t> dst(src.bytes.size());
  for (auto _ : state) {
    std::memcpy(dst.data(), src.bytes.data(), dst.size());
    benchmark::DoNotOptimize(dst.data());
  }
  ReportFrames(state, static_cast<int64_t>(dst.size()));
}

// Rows forwards, or for `rotated` the columns of a source of height x width read upwards,
// as a frame turned by 90 degrees is.
void ConvertFrame(benchmark::State& state, const char* from, const char* to, bool rotated) {
  const PixelFormat& srcFormat = *FindPixelFormat(from);
  const PixelFormat& dstFormat = *FindPixelFormat(to);
  const ConvertPixelsFunc convert = GetConvertFunc(srcFormat, dstFormat);
  const Frame src = MakeFrame(srcFormat);
  const int64_t srcBytes = srcFormat.bitsPerPixel / 8;
  const int64_t rowBytes = BytesPerLine(dstFormat, kWidth, 1);
  std::vector<uint8_t> dst(static_cast<size_t>(rowBytes * kHeight));
  const int64_t columnPitch = srcBytes * kHeight;
  for (auto _ : state) {
    for (int64_t y = 0; y < kHeight; ++y) {
      if (rotated) {
        const uint8_t* start = src.bytes.data() + (kWidth - 1) * columnPitch + y * srcBytes;
        convert(dst.data() + y * rowBytes, start, kWidth, -8 * columnPitch);
      } else {
        convert(dst.data() + y * rowBytes, src.bytes.data() + y * src.pitch, kWidth,
                srcFormat.bitsPerPixel);
      }
    }
    benchmark::DoNotOptimize(dst.data());
  }
  ReportFrames(state, static_cast<int64_t>(dst.size()));
}

}  // namespace

BENCHMARK(BM_Memcpy);
BENCHMARK_CAPTURE(ConvertFrame, BGRX_to_RGBA, "vorna.PixelFormats.BGRX:u8",
                  "vorna.PixelFormats.RGBA:u8", false);
BENCHMARK_CAPTURE(ConvertFrame, BGRA_to_RGBA, "vorna.PixelFormats.BGRA:u8",
                  "vorna.PixelFormats.RGBA:u8", false);
BENCHMARK_CAPTURE(ConvertFrame, BGR_to_RGBA, "vorna.PixelFormats.BGR:u8",
                  "vorna.PixelFormats.RGBA:u8", false);
BENCHMARK_CAPTURE(ConvertFrame, RGBA_to_BGR, "vorna.PixelFormats.RGBA:u8",
                  "vorna.PixelFormats.BGR:u8", false);
BENCHMARK_CAPTURE(ConvertFrame, RGBA_to_BGRX, "vorna.PixelFormats.RGBA:u8",
                  "vorna.PixelFormats.BGRX:u8", false);
BENCHMARK_CAPTURE(ConvertFrame, BGR565_to_RGBA, "vorna.PixelFormats.BGR:u565",
                  "vorna.PixelFormats.RGBA:u8", false);
BENCHMARK_CAPTURE(ConvertFrame, YUY2_to_RGBA, "vorna.PixelFormats.YUV:i422a",
                  "vorna.PixelFormats.RGBA:u8", false);
BENCHMARK_CAPTURE(ConvertFrame, RGBA_to_YUY2, "vorna.PixelFormats.RGBA:u8",
                  "vorna.PixelFormats.YUV:i422a", false);
BENCHMARK_CAPTURE(ConvertFrame, BGRX_to_BGRX, "vorna.PixelFormats.BGRX:u8",
                  "vorna.PixelFormats.BGRX:u8", false);
BENCHMARK_CAPTURE(ConvertFrame, BGRX_to_RGBA_rotated, "vorna.PixelFormats.BGRX:u8",
                  "vorna.PixelFormats.RGBA:u8", true);

BENCHMARK_MAIN();
