// Multimedia basics: four-character codes and the wave format of sound streams. Laid
// out as on 64-bit Windows: WAVEFORMATEX is packed to 18 bytes.
#pragma once

#include "windows.h"

using FOURCC = DWORD;

// A four-character code as a little-endian number: the first character is the low byte.
#define mmioFOURCC(ch0, ch1, ch2, ch3)                                                       \
  ((DWORD)(BYTE)(ch0) | ((DWORD)(BYTE)(ch1) << 8) | ((DWORD)(BYTE)(ch2) << 16) | \
   ((DWORD)(BYTE)(ch3) << 24))
#define MAKEFOURCC(ch0, ch1, ch2, ch3) mmioFOURCC(ch0, ch1, ch2, ch3)

inline constexpr WORD WAVE_FORMAT_PCM = 1;

#pragma pack(push, 1)
// cbSize bytes of format-specific data follow; PCM has none.
struct WAVEFORMATEX {
  WORD wFormatTag;
  WORD nChannels;
  DWORD nSamplesPerSec;
  DWORD nAvgBytesPerSec;
  WORD nBlockAlign;
  WORD wBitsPerSample;
  WORD cbSize;
};
#pragma pack(pop)
using LPWAVEFORMATEX = WAVEFORMATEX*;
static_assert(sizeof(WAVEFORMATEX) == 18);
