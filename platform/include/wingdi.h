// The bitmap header of device-independent bitmaps (DIBs), as the frame format of video
// streams. Laid out as on 64-bit Windows: BITMAPINFOHEADER is 40 bytes.
#pragma once

#include "windows.h"

// biCompression of uncompressed bitmaps.
inline constexpr DWORD BI_RGB = 0;
inline constexpr DWORD BI_BITFIELDS = 3;

// A positive biHeight stores the bottom row first (bottom-up), a negative one the top
// row first. Rows of uncompressed bitmaps are padded to a multiple of 4 bytes.
struct BITMAPINFOHEADER {
  DWORD biSize;
  LONG biWidth;
  LONG biHeight;
  WORD biPlanes;
  WORD biBitCount;
  DWORD biCompression;
  DWORD biSizeImage;
  LONG biXPelsPerMeter;
  LONG biYPelsPerMeter;
  DWORD biClrUsed;
  DWORD biClrImportant;
};
using LPBITMAPINFOHEADER = BITMAPINFOHEADER*;
static_assert(sizeof(BITMAPINFOHEADER) == 40);

struct RGBQUAD {
  BYTE rgbBlue;
  BYTE rgbGreen;
  BYTE rgbRed;
  BYTE rgbReserved;
};

struct BITMAPINFO {
  BITMAPINFOHEADER bmiHeader;
  RGBQUAD bmiColors[1];
};
using LPBITMAPINFO = BITMAPINFO*;
static_assert(sizeof(BITMAPINFO) == 44);
