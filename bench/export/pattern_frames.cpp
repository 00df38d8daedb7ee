// The frames of the host's test pattern as raw RGBA on stdout, 1920x1080, for ffmpeg to
// encode what export_pattern exports. Usage: pattern_frames [FRAMES]   (300)
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "vorna_test_pattern.h"

int main(int argc, char** argv) {
  constexpr vorna::Int kWidth = 1920;
  constexpr vorna::Int kHeight = 1080;
  long frames = argc > 1 ? std::atol(argv[1]) : 300;
  std::vector<vorna::UChar> picture(size_t(kWidth * kHeight * 4));
  for (long n = 0; n < frames; ++n) {
    for (vorna::Int y = 0; y < kHeight; ++y)
      for (vorna::Int x = 0; x < kWidth; ++x) vorna::host::TestPatternPixel(n, x, y, &picture[size_t((y * kWidth + x) * 4)]);
    if (std::fwrite(picture.data(), 1, picture.size(), stdout) != picture.size()) return 1;
  }
  return 0;
}
