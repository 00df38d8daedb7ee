// Wave format structures: WAVEFORMATEX and the MP3 extension whose tail is the
// MF_MT_USER_DATA of an MP3 media type. Packed to the byte, as the platform lays them out.
#pragma once

#include "windows.h"

inline constexpr WORD WAVE_FORMAT_PCM = 0x0001;
inline constexpr WORD WAVE_FORMAT_MPEGLAYER3 = 0x0055;

inline constexpr WORD MPEGLAYER3_ID_UNKNOWN = 0;
inline constexpr WORD MPEGLAYER3_ID_MPEG = 1;
inline constexpr WORD MPEGLAYER3_ID_CONSTANTFRAMESIZE = 2;
inline constexpr DWORD MPEGLAYER3_FLAG_PADDING_ISO = 0x00000000;
inline constexpr DWORD MPEGLAYER3_FLAG_PADDING_ON = 0x00000001;
inline constexpr DWORD MPEGLAYER3_FLAG_PADDING_OFF = 0x00000002;

#pragma pack(push, 1)
struct WAVEFORMATEX {
  WORD wFormatTag;
  WORD nChannels;
  DWORD nSamplesPerSec;
  DWORD nAvgBytesPerSec;
  WORD nBlockAlign;
  WORD wBitsPerSample;
  WORD cbSize;  // bytes of format-specific data behind the structure
};

struct MPEGLAYER3WAVEFORMAT {
  WAVEFORMATEX wfx;
  WORD wID;
  DWORD fdwFlags;
  WORD nBlockSize;       // bytes of one MP3 frame
  WORD nFramesPerBlock;
  WORD nCodecDelay;
};
#pragma pack(pop)

static_assert(sizeof(WAVEFORMATEX) == 18 && sizeof(MPEGLAYER3WAVEFORMAT) == 30);
