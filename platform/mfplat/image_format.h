// Bytes per pixel and row direction of the uncompressed formats, by format code (the
// first 32 bits of the subtype GUID).
#pragma once

#include "windows.h"

namespace tessel::platform {

struct ImageFormat {
  DWORD fourCC;
  int bytesPerPixel;  // of the first plane
  bool rgb;           // bottom-up on the platform, rows padded to 4 bytes
  bool planar420;     // a half-height chroma area follows the luma rows
};

// Null for a format code that is not an uncompressed image format.
const ImageFormat* FindImageFormat(DWORD fourCC);

}  // namespace tessel::platform
