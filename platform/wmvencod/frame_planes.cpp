#include "wmvencod/frame_planes.h"

#include <algorithm>
#include <cstring>

namespace tessel::platform::wmv3 {

void Plane::Allocate(int width, int height) {
  width_ = width;
  height_ = height;
  stride_ = width + 2 * kBorder;
  samples_.assign(static_cast<size_t>(stride_) * (height + 2 * kBorder), 0);
  origin_ = samples_.data() + kBorder * stride_ + kBorder;
}

void Plane::Load(const uint8_t* source, ptrdiff_t sourceStride, int visibleWidth, int visibleHeight) {
  int columns = std::min(visibleWidth, width_);
  int rows = std::min(visibleHeight, height_);
  for (int y = 0; y < height_; ++y) {
    uint8_t* row = At(0, y);
    std::memcpy(row, source + std::min(y, rows - 1) * sourceStride, columns);
    std::memset(row + columns, row[columns - 1], width_ - columns);
  }
}

void Plane::ExtendEdges() {
  for (int y = 0; y < height_; ++y) {
    uint8_t* row = At(0, y);
    std::memset(row - kBorder, row[0], kBorder);
    std::memset(row + width_, row[width_ - 1], kBorder);
  }
  for (int y = 1; y <= kBorder; ++y) {
    std::memcpy(At(-kBorder, -y), At(-kBorder, 0), stride_);
    std::memcpy(At(-kBorder, height_ - 1 + y), At(-kBorder, height_ - 1), stride_);
  }
}

void FramePlanes::Allocate(int macroblocksWide, int macroblocksHigh) {
  planes[0].Allocate(16 * macroblocksWide, 16 * macroblocksHigh);
  planes[1].Allocate(8 * macroblocksWide, 8 * macroblocksHigh);
  planes[2].Allocate(8 * macroblocksWide, 8 * macroblocksHigh);
}

void FramePlanes::ExtendEdges() {
  for (Plane& plane : planes) plane.ExtendEdges();
}

}  // namespace tessel::platform::wmv3
