// Layout queries on a pixel format.
#include "vorna/pixel/pixelformat.h"

namespace vorna::pixel {

ChannelOffsets GetChannelOffsets(const PixelFormat& format) {
  ChannelOffsets offsets;
  for (const ImageChannel& channel : format.Channels()) {
    offsets.bits[offsets.count++] = channel.offset;
  }
  return offsets;
}

int64_t BytesPerLine(const PixelFormat& format, int64_t width, int64_t alignment) {
  if (width < 1) return 0;
  const int64_t unit = format.packedPixelCount;
  const int64_t pixels = (width + unit - 1) / unit * unit;
  const int64_t bytes = (pixels * format.bitsPerPixel + 7) / 8;
  if (alignment <= 1) return bytes;
  return (bytes + alignment - 1) / alignment * alignment;
}

}  // namespace vorna::pixel
