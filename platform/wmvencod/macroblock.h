// What the encoder decides for one macroblock, and how the bitstream says it.
#pragma once

#include <cstdint>
#include <vector>

#include "wmvencod/motion_compensation.h"

namespace tessel::platform::wmv3 {

// Blocks 0..3 are the luma 8x8 blocks in raster order, 4 is Cb, 5 is Cr; pattern bits
// run from block 0 in bit 5 to block 5 in bit 0.
constexpr uint8_t BlockBit(int block) { return static_cast<uint8_t>(1 << (5 - block)); }

struct Macroblock {
  bool intra = true;
  MotionVector vector;  // zero for intra macroblocks
  // Quantised levels in raster order; in intra blocks [0] is the DC level.
  int16_t levels[6][64];
};

// The macroblock's syntax elements, derived from its and its neighbours' decisions.
struct MacroblockCode {
  // Intra macroblocks.
  bool acPrediction = false;
  uint8_t scan[6] = {};  // index into kZigzag per block
  int16_t dcDifferential[6] = {};
  int16_t coded[6][64];  // the levels, first row or column as differences under AC prediction
  // Both: bit per block with coefficients to code (intra: AC only).
  uint8_t codedBlocks = 0;
  // Inter macroblocks.
  bool skipped = false;
  int hybridBit = -1;         // -1 when the picture has no bit for this macroblock
  MotionVector differential;  // in half samples, wrapped into the vector range
};

// The macroblocks of one picture, row by row.
struct MacroblockGrid {
  int width = 0;  // in macroblocks
  int height = 0;
  std::vector<Macroblock> blocks;
  std::vector<MacroblockCode> codes;

  void Resize(int macroblocksWide, int macroblocksHigh) {
    width = macroblocksWide;
    height = macroblocksHigh;
    blocks.assign(static_cast<size_t>(width) * height, Macroblock{});
    codes.assign(blocks.size(), MacroblockCode{});
  }
  Macroblock& At(int x, int y) { return blocks[static_cast<size_t>(y) * width + x]; }
  const Macroblock& At(int x, int y) const { return blocks[static_cast<size_t>(y) * width + x]; }
  MacroblockCode& CodeAt(int x, int y) { return codes[static_cast<size_t>(y) * width + x]; }
  const MacroblockCode& CodeAt(int x, int y) const { return codes[static_cast<size_t>(y) * width + x]; }
};

}  // namespace tessel::platform::wmv3
