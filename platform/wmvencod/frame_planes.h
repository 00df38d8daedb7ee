// The encoder's pictures: Y, U and V planes of the coded size (whole macroblocks) with
// a border around each that repeats the edge samples, as a decoder extends its
// reference pictures for motion vectors that point outside.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace tessel::platform::wmv3 {

// One 8-bit plane; At(x, y) is valid for x, y from -kBorder to size + kBorder - 1.
class Plane {
 public:
  static constexpr int kBorder = 48;

  void Allocate(int width, int height);
  int Width() const { return width_; }
  int Height() const { return height_; }
  ptrdiff_t Stride() const { return stride_; }
  uint8_t* At(int x, int y) { return origin_ + y * stride_ + x; }
  const uint8_t* At(int x, int y) const { return origin_ + y * stride_ + x; }
  // Copies visibleWidth x visibleHeight samples in and repeats the last column and row
  // over the rest of the plane.
  void Load(const uint8_t* source, ptrdiff_t sourceStride, int visibleWidth, int visibleHeight);
  // Fills the border from the plane's edges.
  void ExtendEdges();

 private:
  std::vector<uint8_t> samples_;
  uint8_t* origin_ = nullptr;
  int width_ = 0;
  int height_ = 0;
  ptrdiff_t stride_ = 0;
};

// A 4:2:0 picture of whole macroblocks.
struct FramePlanes {
  Plane planes[3];

  void Allocate(int macroblocksWide, int macroblocksHigh);
  void ExtendEdges();
};

}  // namespace tessel::platform::wmv3
