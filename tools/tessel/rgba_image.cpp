#include "rgba_image.h"

#include <algorithm>
#include <cstring>

namespace tessel::cli {

RgbaImage::RgbaImage(int64_t w, int64_t h, Rgba fill) : width(w), height(h), pixels(size_t(w * h * 4)) {
  for (size_t i = 0; i < pixels.size(); i += 4) std::memcpy(&pixels[i], fill.data(), 4);
}

bool RgbaImage::IsOpaque() const {
  for (size_t i = 3; i < pixels.size(); i += 4)
    if (pixels[i] != 255) return false;
  return true;
}

RgbaImage FromFrame(const vorna::host::ImageFrame& frame) {
  RgbaImage image;
  image.width = frame.width;
  image.height = frame.height;
  image.pixels.resize(size_t(frame.width * frame.height * 4));
  for (int64_t y = 0; y < frame.height; ++y)
    std::memcpy(image.At(0, y), &frame.pixels[size_t(y * frame.bytesPerLine)], size_t(frame.width * 4));
  return image;
}

RgbaImage Scale(const RgbaImage& source, int64_t width, int64_t height) {
  RgbaImage target(width, height, Rgba{0, 0, 0, 255});
  if (source.width == 0 || source.height == 0) return target;
  for (int64_t y = 0; y < height; ++y) {
    int64_t top = y * source.height / height;
    int64_t bottom = std::max(top + 1, (y + 1) * source.height / height);
    for (int64_t x = 0; x < width; ++x) {
      int64_t left = x * source.width / width;
      int64_t right = std::max(left + 1, (x + 1) * source.width / width);
      uint64_t sum[4] = {};
      for (int64_t sy = top; sy < bottom; ++sy)
        for (int64_t sx = left; sx < right; ++sx)
          for (int c = 0; c < 4; ++c) sum[c] += source.At(sx, sy)[c];
      uint64_t count = uint64_t((bottom - top) * (right - left));
      for (int c = 0; c < 4; ++c) target.At(x, y)[c] = uint8_t((sum[c] + count / 2) / count);
    }
  }
  return target;
}

void Paste(RgbaImage& target, const RgbaImage& source, int64_t x, int64_t y) {
  int64_t left = std::max<int64_t>(0, -x);
  int64_t right = std::min(source.width, target.width - x);
  if (left >= right) return;
  for (int64_t sy = std::max<int64_t>(0, -y); sy < source.height && sy + y < target.height; ++sy)
    std::memcpy(target.At(x + left, y + sy), source.At(left, sy), size_t((right - left) * 4));
}

void FillRect(RgbaImage& target, int64_t x, int64_t y, int64_t width, int64_t height, Rgba color) {
  for (int64_t ty = std::max<int64_t>(0, y); ty < std::min(target.height, y + height); ++ty)
    for (int64_t tx = std::max<int64_t>(0, x); tx < std::min(target.width, x + width); ++tx)
      std::memcpy(target.At(tx, ty), color.data(), 4);
}

}  // namespace tessel::cli
