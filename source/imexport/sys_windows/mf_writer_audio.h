// The sound of a movie: one audio stream of the sink writer, fed the whole track as a
// single sample at time 0. The platform's writer cuts it up and spreads it over the
// file beside the frames.
#pragma once

#include <mfreadwrite.h>

#include "vorna/audioobject.h"
#include "vorna/datadictionary.h"

namespace tessel {

// Adds the audio stream in the codec, rate and bit rate of settings, with the source's
// own PCM layout as input; the stream's index.
vorna::Result<DWORD> AddAudioStream(IMFSinkWriter* sinkWriter, const vorna::DataDictionary& settings,
                                    const vorna::AudioObjectInterface& sound);

// Writes the whole track as one sample at time 0 on stream.
vorna::Result<void> WriteWholeTrack(IMFSinkWriter* sinkWriter, DWORD stream, const vorna::AudioObjectInterface& sound);

}  // namespace tessel
