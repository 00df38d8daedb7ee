// The media types of a sink writer's audio stream: the target type that AddStream takes
// (AAC or MP3) and the PCM input type that SetInputMediaType takes.
#pragma once

#include <cstdint>

#include "mfobjects.h"

namespace tessel::platform {

struct AudioTarget {
  GUID subtype;
  int channels;
  int sampleRate;
  int64_t bitRate;  // bits per second, from the average bytes per second
};

// MF_E_INVALIDMEDIATYPE for a type without channels, rate or average bytes per second,
// more than two channels, a rate the format doesn't have, an AAC profile beyond LC, an
// AAC payload other than raw blocks, or MP3 user data that isn't an MPEG layer 3 tail.
HRESULT ReadAudioTarget(IMFMediaType* type, AudioTarget* target);

struct PcmInput {
  int channels;
  int sampleRate;
  int bitsPerSample;      // 8 (unsigned), 16, 24 or 32
  uint64_t channelMask;   // speaker bits; 0 for the usual layout of the channel count
  int BlockBytes() const { return channels * bitsPerSample / 8; }
};

// MF_E_INVALIDMEDIATYPE for another subtype, 0 or more than 8 channels, another sample
// size, or a block alignment that doesn't match.
HRESULT ReadPcmInput(IMFMediaType* type, PcmInput* input);

}  // namespace tessel::platform
