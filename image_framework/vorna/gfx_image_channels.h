// The vocabulary of pixels beside the formats: channels and their types, colour
// spaces, and the blends of one pixel onto another.
#pragma once

#include "vorna/objectbase.h"

namespace vorna {

VORNA_DECLARED_INTERFACE(ImageChannelInterface, ObjectInterface, "vorna.ImageChannelInterface#1", refclass::READ_ONLY,
                         kGetChannelBits, kGetChannelType, kGetDataType, kIsIdenticalComponent);

VORNA_DECLARED_INTERFACE(ImageChannelTypeInterface, ObjectInterface, "vorna.ImageChannelTypeInterface#1", refclass::READ_ONLY,
                         kGetDefaultFillValue, kGetColorSpace, kGetChannel);

VORNA_DECLARED_INTERFACE(ColorSpaceInterface, ObjectInterface, "vorna.ColorSpaceInterface#1", refclass::READ_ONLY,
                         kGetDefaultNonlinearColorProfile, kGetDefaultLinearColorProfile);

VORNA_DECLARED_INTERFACE(ImagePixelBlendInterface, ObjectInterface, "vorna.ImagePixelBlendInterface#1", refclass::READ_ONLY,
                         kBlendPixels);

}  // namespace vorna
