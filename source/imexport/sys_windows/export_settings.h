// The export settings of the Media Foundation savers: the module's own setting keys
// (the shared ones, datarate, keyframes and disable srgb conversion, are the image
// framework's) and the description of all seven for the host.
#pragma once

#include <guiddef.h>

#include "vorna/datadescription.h"
#include "vorna/records.h"

namespace tessel {

extern vorna::InternedId g_settingCodec;             // Id, the video codec
extern vorna::InternedId g_settingAudioCodec;        // Id, "aac" or "mp3"
extern vorna::InternedId g_settingAudioSamplerate;   // Int64, Hz of the encoded sound
extern vorna::InternedId g_settingAudioKilobitrate;  // Int64, kilobits per second

struct MovieContainer;

// Adds the seven settings, in order, each an entry of identifier, data type, default,
// minimum and choices; the first failure ends the call, with the entries before it
// kept. settings, if given, only decides the choices of the sample rate.
vorna::Result<void> DescribeMovieSettings(vorna::DataDescription& description, const vorna::DataDictionary* settings,
                                          const MovieContainer& container);

}  // namespace tessel
