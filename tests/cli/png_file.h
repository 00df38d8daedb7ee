// Reads a PNG file back for the tests: size, channels and 8-bit samples.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tessel::testing {

struct PngPicture {
  int width = 0;
  int height = 0;
  int channels = 0;  // 3 for RGB, 4 for RGBA
  std::vector<uint8_t> samples;  // top line first

  const uint8_t* At(int x, int y) const { return &samples[size_t((y * width + x) * channels)]; }
};

// False when the file is not a readable 8-bit RGB or RGBA PNG.
bool ReadPng(const std::string& path, PngPicture& picture);

}  // namespace tessel::testing
