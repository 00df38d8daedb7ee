// The video codecs of the Media Foundation savers: the table of codec names and their
// platform subtypes, what each container allows, and the choice of a codec from the
// export settings.
#pragma once

#include <guiddef.h>

#include "vorna/basearray.h"
#include "vorna/datadictionary.h"
#include "vorna/id.h"

namespace tessel {

struct MovieCodecEntry {
  vorna::Id name;      // the value of the codec setting
  GUID subtype;        // video subtype of the output type
  vorna::Bool flipRows;  // rows go to the platform last picture row first
};

// "H.264", "WMV1", "WMV2", "WMV3", shared by all four containers.
extern const vorna::Block<const MovieCodecEntry> movieCodecTable;

// What a saver passes to the writer for its container: the container type (GUID_NULL
// lets the platform choose by the file's suffix), the codec without a setting and the
// codecs the setting may name.
struct MovieContainer {
  const GUID* container;
  const GUID* defaultSubtype;
  vorna::Block<const vorna::Id> allowedCodecs;
};

extern const MovieContainer mp4Container;
extern const MovieContainer threeGpContainer;
extern const MovieContainer asfContainer;
extern const MovieContainer wmvContainer;

// The row of the codec setting in settings (which may be a null dictionary), or of the container's
// default when the setting is absent or not an Id. A name the container doesn't allow
// fails with "Unsupported Codec for this container format: @.", one the table lacks
// with "Unsupported Codec: @.".
vorna::Result<const MovieCodecEntry*> ChooseMovieCodec(const vorna::DataDictionary& settings,
                                                        const MovieContainer& container);

// The row of a subtype; null when the table has none.
const MovieCodecEntry* FindMovieCodec(const GUID& subtype);

}  // namespace tessel
