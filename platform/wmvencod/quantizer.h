// Uniform quantisation of transform coefficients as the picture quantiser defines it:
// AC (and inter DC) levels in steps of 2 * pq (+1 with the half step), intra DC levels
// in steps of the DC scale of pq. Dequantisation is exactly what a decoder computes.
#pragma once

#include <cstdint>

namespace tessel::platform::wmv3 {

struct Quantizer {
  int pq = 1;             // 1..31, the picture quantiser (PQINDEX in uniform mode)
  bool halfStep = false;  // HALFQP, only with pq <= 8

  int Step() const { return 2 * pq + (halfStep ? 1 : 0); }
  int DcScale() const;
  // The largest level magnitude the picture's escape code can carry.
  int MaxLevel() const { return pq < 8 ? 2047 : 255; }
  // The quantiser whose AC step is nearest to step (2..62).
  static Quantizer FromStep(int step);
};

// coefficients: ForwardTransform8x8 output. Intra: levels[0] is the DC level.
void QuantizeIntra(const int32_t* coefficients, const Quantizer& quantizer, int16_t* levels);
// Returns whether any level is nonzero.
bool QuantizeInter(const int32_t* coefficients, const Quantizer& quantizer, int16_t* levels);

// Whether an inter block's levels are worth their bits: a block holding only a few
// ones, far apart along the inter scan, restores less than it costs and is better
// left uncoded.
bool WorthCoding(const int16_t* levels);

// Levels to the coefficients the inverse transform takes.
void DequantizeIntra(const int16_t* levels, const Quantizer& quantizer, int16_t* coefficients);
void DequantizeInter(const int16_t* levels, const Quantizer& quantizer, int16_t* coefficients);

}  // namespace tessel::platform::wmv3
