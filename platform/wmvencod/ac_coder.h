// Run-level coding of a block's coefficients with one AC coding set: table codes, the
// two offset escapes and the fixed-length escape, whose field sizes the first use in a
// picture announces.
#pragma once

#include <cstdint>

#include "wmvencod/bit_writer.h"

namespace tessel::platform::wmv3 {

// The field sizes of fixed-length escapes in one picture, and whether the picture has
// announced them yet.
struct EscapeLengths {
  int level = 0;  // bits of the level
  int run = 0;    // bits of the run
  bool announced = false;
};

// What a block costs with one coding set, and the largest run and level it would write
// as fixed-length escapes.
struct BlockCost {
  int bits = 0;
  int maxEscapeRun = -1;
  int maxEscapeLevel = 0;

  void Add(const BlockCost& other);
};

// coefficients: 64 values in raster order; the scan order gives the coding order, from
// scan position `start` (1 when the DC is coded apart). The block must hold a nonzero
// coefficient from start on.
BlockCost AcBlockCost(int codingSet, const uint8_t* scan, const int16_t* coefficients, int start);
void WriteAcBlock(BitWriter& writer, int codingSet, const uint8_t* scan, const int16_t* coefficients, int start,
                  EscapeLengths& escape, bool shortLevelHeader);

// Escape field sizes that hold maxRun and maxLevel. shortLevelHeader: the picture uses
// the 3-bit level size header (pq below 8), which allows 1..11 bits; the other allows
// 2..8.
EscapeLengths EscapeLengthsFor(int maxRun, int maxLevel, bool shortLevelHeader);

}  // namespace tessel::platform::wmv3
