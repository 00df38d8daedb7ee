// Multimedia basics: four-character codes, and the wave format of sound streams from
// mmreg.h.
#pragma once

#include "mmreg.h"
#include "windows.h"

using FOURCC = DWORD;

// A four-character code as a little-endian number: the first character is the low byte.
#define mmioFOURCC(ch0, ch1, ch2, ch3)                                                       \
  ((DWORD)(BYTE)(ch0) | ((DWORD)(BYTE)(ch1) << 8) | ((DWORD)(BYTE)(ch2) << 16) | \
   ((DWORD)(BYTE)(ch3) << 24))
#define MAKEFOURCC(ch0, ch1, ch2, ch3) mmioFOURCC(ch0, ch1, ch2, ch3)

using LPWAVEFORMATEX = WAVEFORMATEX*;
