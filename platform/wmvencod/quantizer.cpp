#include "wmvencod/quantizer.h"

#include <algorithm>
#include <array>
#include <cstdlib>

#include "wmvencod/transform.h"
#include "wmvencod/vc1_tables.h"

namespace tessel::platform::wmv3 {
namespace {

// Rounding offsets in steps: intra levels round closer to nearest than inter levels,
// whose small values cost more bits than they win.
constexpr float kIntraRounding = 0.42f;
constexpr float kInterRounding = 0.18f;

const std::array<float, 64>& Scales() {
  static const std::array<float, 64> scales = [] {
    std::array<float, 64> s{};
    for (int i = 0; i < 64; ++i) s[i] = ForwardScale(i);
    return s;
  }();
  return scales;
}

int16_t Level(int32_t coefficient, float scale, float rounding, int maxLevel) {
  float magnitude = std::abs(static_cast<float>(coefficient)) * scale + rounding;
  int level = std::min(static_cast<int>(magnitude), maxLevel);
  return static_cast<int16_t>(coefficient < 0 ? -level : level);
}

// How much a level of one is worth by the zeros before it on the scan; larger levels
// always are.
constexpr int kOneScore[6] = {3, 2, 2, 1, 1, 1};
constexpr int kWorthThreshold = 6;

}  // namespace

bool WorthCoding(const int16_t* levels) {
  const uint8_t* scan = kZigzag[kScanInter];
  int score = 0, run = 0;
  for (int i = 0; i < 64 && score < kWorthThreshold; ++i) {
    int level = levels[scan[i]];
    if (level == 0) {
      ++run;
      continue;
    }
    score += std::abs(level) > 1 ? kWorthThreshold : (run < 6 ? kOneScore[run] : 0);
    run = 0;
  }
  return score >= kWorthThreshold;
}

int Quantizer::DcScale() const { return kDcScale[pq]; }

Quantizer Quantizer::FromStep(int step) {
  step = std::clamp(step, 2, 62);
  if (step <= 17) return Quantizer{step / 2, (step & 1) != 0};
  return Quantizer{(step + 1) / 2, false};
}

void QuantizeIntra(const int32_t* coefficients, const Quantizer& quantizer, int16_t* levels) {
  const auto& scales = Scales();
  float inverseStep = 1.0f / static_cast<float>(quantizer.Step());
  levels[0] = Level(coefficients[0], scales[0] / static_cast<float>(quantizer.DcScale()), 0.5f, 2047);
  for (int i = 1; i < 64; ++i)
    levels[i] = Level(coefficients[i], scales[i] * inverseStep, kIntraRounding, quantizer.MaxLevel());
}

bool QuantizeInter(const int32_t* coefficients, const Quantizer& quantizer, int16_t* levels) {
  const auto& scales = Scales();
  float inverseStep = 1.0f / static_cast<float>(quantizer.Step());
  int any = 0;
  for (int i = 0; i < 64; ++i) {
    levels[i] = Level(coefficients[i], scales[i] * inverseStep, kInterRounding, quantizer.MaxLevel());
    any |= levels[i];
  }
  return any != 0;
}

void DequantizeIntra(const int16_t* levels, const Quantizer& quantizer, int16_t* coefficients) {
  int step = quantizer.Step();
  coefficients[0] = static_cast<int16_t>(levels[0] * quantizer.DcScale());
  for (int i = 1; i < 64; ++i) coefficients[i] = static_cast<int16_t>(levels[i] * step);
}

void DequantizeInter(const int16_t* levels, const Quantizer& quantizer, int16_t* coefficients) {
  int step = quantizer.Step();
  for (int i = 0; i < 64; ++i) coefficients[i] = static_cast<int16_t>(levels[i] * step);
}

}  // namespace tessel::platform::wmv3
