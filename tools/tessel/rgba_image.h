// An 8-bit RGBA picture in memory, top line first, four bytes per pixel, and the few
// operations the commands need: taking a delivered frame, scaling, pasting, filling.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "vorna_sinks.h"

namespace tessel::cli {

using Rgba = std::array<uint8_t, 4>;

struct RgbaImage {
  int64_t width = 0;
  int64_t height = 0;
  std::vector<uint8_t> pixels;

  RgbaImage() = default;
  RgbaImage(int64_t w, int64_t h, Rgba fill);
  uint8_t* At(int64_t x, int64_t y) { return &pixels[size_t((y * width + x) * 4)]; }
  const uint8_t* At(int64_t x, int64_t y) const { return &pixels[size_t((y * width + x) * 4)]; }
  // Whether every pixel is opaque.
  bool IsOpaque() const;
};

// The pixels of a frame kept by an image sink in vorna.PixelFormats.RGBA:u8.
RgbaImage FromFrame(const vorna::host::ImageFrame& frame);
// The picture resized to width x height, each target pixel the mean of the source
// pixels it covers.
RgbaImage Scale(const RgbaImage& source, int64_t width, int64_t height);
// Copies source into target with its top left corner at (x, y), clipped to the target.
void Paste(RgbaImage& target, const RgbaImage& source, int64_t x, int64_t y);
// Fills the rectangle, clipped to the picture.
void FillRect(RgbaImage& target, int64_t x, int64_t y, int64_t width, int64_t height, Rgba color);

}  // namespace tessel::cli
