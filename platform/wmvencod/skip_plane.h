// The skipped-macroblock bitplane of a P-picture: coded raw (one bit in each
// macroblock's layer), or in the picture header as pairs (Norm-2), rows or columns
// (row-skip, column-skip), each possibly inverted, whichever takes the fewest bits.
#pragma once

#include <cstdint>
#include <vector>

#include "wmvencod/bit_writer.h"

namespace tessel::platform::wmv3 {

// flags: one per macroblock, row by row, width x height. Writes the bitplane header
// (and the plane unless raw is cheapest); returns whether the macroblock layer carries
// the bits (raw).
bool WriteSkipPlane(BitWriter& writer, const std::vector<uint8_t>& flags, int width, int height);

}  // namespace tessel::platform::wmv3
