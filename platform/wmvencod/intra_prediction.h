// DC and AC prediction of intra blocks, in I-pictures and in P-pictures, and the choice
// of AC prediction per macroblock. Prediction works on quantised levels only, so the
// reconstruction does not depend on it.
#pragma once

#include "wmvencod/macroblock.h"
#include "wmvencod/quantizer.h"

namespace tessel::platform::wmv3 {

// Fills the intra fields of grid.CodeAt(x, y): DC differentials, AC prediction, scans,
// coded arrays and coded blocks. In P-pictures only intra neighbours predict.
void PredictIntraMacroblock(MacroblockGrid& grid, int x, int y, const Quantizer& quantizer, bool pPicture);

// The coded-block bit that an I-picture predicts for luma block `block` of (x, y)
// from the coded blocks of its neighbours.
bool PredictedCodedBlock(const MacroblockGrid& grid, int x, int y, int block);

}  // namespace tessel::platform::wmv3
