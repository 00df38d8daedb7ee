// What a movie saver tells the host about itself through GetData: it writes images,
// movies and sound, up to 32000 pixels wide and high, 8 bits per channel, without
// alpha, layers or an embedded colour profile.
#pragma once

#include "vorna/dataptr.h"

namespace tessel {

// The value of a capability key; an empty Data for a key the table doesn't hold, which
// the saver passes to its base. supports_systemoptions is answered only when
// systemOptions is set. bitDepth must outlive the Data: bitdepthsimage is a block over it.
vorna::Data SaverCapability(const vorna::ConstDataPtr& key, const vorna::DataType& bitDepth,
                            vorna::Bool systemOptions);

// The largest width and height a saver takes, whatever the codec.
inline constexpr vorna::Int64 MAXIMAL_IMAGE_RESOLUTION = 32000;

}  // namespace tessel
