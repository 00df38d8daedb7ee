// The VC-1 8x8 transform. The inverse is the standard's integer inverse transform, bit
// for bit what a decoder computes; the forward transform is its exact counterpart up to
// the normalisation, which the quantiser folds in (see ForwardScale).
#pragma once

#include <cstdint>

namespace tessel::platform::wmv3 {

// block: 64 values, row by row (row index = vertical position or frequency).
// Forward: out = T * block * T^t with the standard's basis T; the transform
// coefficient is out[k] * ForwardScale(k).
void ForwardTransform8x8(const int16_t* block, int32_t* out);
float ForwardScale(int position);

// In place, coefficients in, sample differences (or intra samples) out.
void InverseTransform8x8(int16_t* block);

}  // namespace tessel::platform::wmv3
