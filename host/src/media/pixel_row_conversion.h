// The conversion of pixel rows from the pixel format and colour profile of a frame into
// the ones an export asks for. Between two profiles with different transfer curves the
// rows pass through RGBA:u8, where their colour channels are re-encoded; otherwise one
// row conversion of the pixel formats does the whole job.
#pragma once

#include <vector>

#include "vorna/gfx_image_pixelformats.h"
#include "vorna/pixel/colortransfer.h"

namespace vorna::host {

class PixelRowConversion {
 public:
  // An UnsupportedArgumentErrorObject when the host has no conversion between the
  // formats. A null profile on either side means the values are taken as they are.
  static Result<PixelRowConversion> Make(const PixelFormat& source, const ColorProfile& sourceProfile,
                                         const PixelFormatInterface& target, const ChannelOffsets& targetOffsets,
                                         const ColorProfile& targetProfile);

  // Writes count pixels to destination, reading source with the step in bits. scratch
  // belongs to the calling thread; it holds the RGBA row when profiles are converted.
  void Convert(UChar* destination, const UChar* source, Int count, Int sourceStepBits,
               std::vector<UChar>& scratch) const;

 private:
  ConvertPixelFunc _direct = nullptr;    // source to target, when no curve changes
  ConvertPixelFunc _toRgba = nullptr;    // source to RGBA:u8, when one does
  ConvertPixelFunc _fromRgba = nullptr;  // RGBA:u8 to target
  const pixel::TransferTable* _table = nullptr;
};

}  // namespace vorna::host
