// The table of uncompressed image formats.
#include "mfplat/image_format.h"

#include "mfapi.h"

namespace tessel::platform {

namespace {

constexpr ImageFormat kFormats[] = {
    {22, 4, true, false},  // RGB32
    {21, 4, true, false},  // ARGB32
    {20, 3, true, false},  // RGB24
    {24, 2, true, false},  // RGB555
    {23, 2, true, false},  // RGB565
    {41, 1, true, false},  // RGB8
    {MFFourCC("YUY2"), 2, false, false},
    {MFFourCC("YVYU"), 2, false, false},
    {MFFourCC("UYVY"), 2, false, false},
    {MFFourCC("AYUV"), 4, false, false},
    {MFFourCC("NV12"), 1, false, true},
    {MFFourCC("I420"), 1, false, true},
    {MFFourCC("IYUV"), 1, false, true},
    {MFFourCC("YV12"), 1, false, true},
};

}  // namespace

const ImageFormat* FindImageFormat(DWORD fourCC) {
  for (const ImageFormat& format : kFormats) {
    if (format.fourCC == fourCC) return &format;
  }
  return nullptr;
}

}  // namespace tessel::platform
