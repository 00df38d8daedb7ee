#include "vorna/translationunit.h"

#include "vorna/gfx_image_channels.h"

namespace vorna {

VORNA_DEFINE_INTERFACE(ImageChannelInterface, &ObjectInterface::_record);

VORNA_DEFINE_INTERFACE(ImageChannelTypeInterface, &ObjectInterface::_record);

VORNA_DEFINE_INTERFACE(ColorSpaceInterface, &ObjectInterface::_record);

VORNA_DEFINE_INTERFACE(ImagePixelBlendInterface, &ObjectInterface::_record);

}  // namespace vorna
