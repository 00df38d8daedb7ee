// Motion vector prediction of 1-MV progressive P-pictures (median of the neighbours
// above, above-right and left, pulled back towards the picture, with the hybrid choice
// between above and left where they disagree), and the MVDATA code of a differential.
#pragma once

#include "wmvencod/bit_writer.h"
#include "wmvencod/macroblock.h"

namespace tessel::platform::wmv3 {

// Vector ranges of pictures without extended vectors, in quarter samples: x in
// [-kRangeX, kRangeX), y in [-kRangeY, kRangeY).
inline constexpr int kRangeX = 256;
inline constexpr int kRangeY = 128;

struct VectorPrediction {
  MotionVector predictor;
  bool hybrid = false;  // the bitstream chooses between above and left
  MotionVector above;   // the choices, for bit 1 and bit 0
  MotionVector left;
};

// The prediction for macroblock (x, y) from the decided vectors and intra flags of
// the grid's macroblocks above and to the left.
VectorPrediction PredictVector(const MacroblockGrid& grid, int x, int y);

// Chooses the hybrid bit (closest candidate) and sets code.differential.
void CodeVector(const VectorPrediction& prediction, MotionVector vector, MacroblockCode& code);

// MVDATA: the differential (half samples), whether the macroblock is intra, whether it
// has coefficients. An inter macroblock without coefficients must have a nonzero
// differential (otherwise it is skipped).
int MvDataBits(int table, MotionVector differential, bool intra, bool hasCoefficients);
void WriteMvData(BitWriter& writer, int table, MotionVector differential, bool intra, bool hasCoefficients);

// Bits of a differential with table 0, for the motion search's rate estimate.
int VectorCostEstimate(MotionVector differential);

}  // namespace tessel::platform::wmv3
