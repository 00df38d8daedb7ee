// Transfer curves of the colour profiles, for re-encoding 8-bit colour channels from one
// profile to another: gamma-encoded sRGB and linear light.
#pragma once

#include <array>
#include <cstdint>

#include "vorna/pixel/colorprofile.h"

namespace vorna::pixel {

// How a profile's channel values relate to light. `srgb`, `sgrey` and `yuv` (whose
// conversions to and from RGB work on gamma-encoded values) follow the sRGB curve;
// `linear_rgb` and `linear_grey` are linear; `none` and `cmyk` have no curve that a
// conversion could use.
enum class Transfer : uint8_t { None, Srgb, Linear };

Transfer TransferOf(ColorProfile profile);

using TransferTable = std::array<uint8_t, 256>;

// The table that re-encodes an 8-bit channel from one curve to the other, rounded to
// nearest. Null when nothing is to be done: the same curve, or a side without a curve.
const TransferTable* FindTransferTable(Transfer from, Transfer to);

// Re-encodes the red, green and blue bytes of count RGBA:u8 pixels in place; alpha stays.
void ApplyTransfer(uint8_t* rgba, int64_t count, const TransferTable& table);

}  // namespace vorna::pixel
