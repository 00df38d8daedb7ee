#include "wmvencod/mv_prediction.h"

#include <algorithm>
#include <cstdlib>

#include "wmvencod/vc1_tables.h"

namespace tessel::platform::wmv3 {
namespace {

constexpr int kHybridThreshold = 32;

int Median(int a, int b, int c) { return std::max(std::min(a, b), std::min(std::max(a, b), c)); }

int Wrap(int value, int range) { return ((value + range) & (2 * range - 1)) - range; }

// Size classes of one differential component (half samples): class k holds magnitudes
// from kClassStart[k] on, written with kClassBits[k] bits (sign in the lowest).
constexpr int kClassStart[6] = {0, 1, 3, 7, 15, 31};
constexpr int kClassBits[6] = {0, 2, 3, 4, 5, 7};
constexpr int kClassEnd = 31 + (1 << 6);  // first magnitude class 5 cannot hold

int ClassOf(int value) {
  int magnitude = std::abs(value);
  if (magnitude >= kClassEnd) return -1;
  int k = 5;
  while (magnitude < kClassStart[k]) --k;
  return k;
}

constexpr int kEscapeIndex = 35;
constexpr int kIntraIndex = 36;

// The joint index of a differential, kEscapeIndex where it needs the escape.
int JointIndex(MotionVector differential) {
  int cx = ClassOf(differential.x), cy = ClassOf(differential.y);
  if (cx < 0 || cy < 0) return kEscapeIndex;
  int index = cx + 6 * cy;
  return index == kEscapeIndex ? kEscapeIndex : index;
}

int Symbol(int index, bool hasCoefficients) { return index - 1 + (hasCoefficients ? 37 : 0); }

int ComponentBits(int value) { return kClassBits[ClassOf(value)]; }

void WriteComponent(BitWriter& writer, int value) {
  int k = ClassOf(value);
  if (k == 0) return;
  uint32_t field = static_cast<uint32_t>(std::abs(value) - kClassStart[k]) << 1 | (value < 0 ? 1 : 0);
  writer.Put(field, kClassBits[k]);
}

}  // namespace

VectorPrediction PredictVector(const MacroblockGrid& grid, int x, int y) {
  bool aValid = y > 0;
  bool bValid = aValid && grid.width > 1;
  bool cValid = x > 0;
  MotionVector a, b, c;
  if (aValid) a = grid.At(x, y - 1).vector;
  if (bValid) b = grid.At(x == grid.width - 1 ? x - 1 : x + 1, y - 1).vector;
  if (cValid) c = grid.At(x - 1, y).vector;

  MotionVector p;
  if (aValid + bValid + cValid > 1) {
    p = {Median(a.x, b.x, c.x), Median(a.y, b.y, c.y)};
  } else if (aValid) {
    p = a;
  } else if (cValid) {
    p = c;
  } else if (bValid) {
    p = b;
  }
  // Pull the predictor back so that the block it points at overlaps the picture.
  int qx = x << 6, qy = y << 6;
  int maxX = (grid.width << 6) - 4, maxY = (grid.height << 6) - 4;
  if (qx + p.x < -60) p.x = -60 - qx;
  if (qy + p.y < -60) p.y = -60 - qy;
  if (qx + p.x > maxX) p.x = maxX - qx;
  if (qy + p.y > maxY) p.y = maxY - qy;

  VectorPrediction prediction;
  prediction.predictor = p;
  prediction.above = a;
  prediction.left = c;
  if (aValid && cValid) {
    auto distance = [&](bool intra, MotionVector v) {
      return intra ? std::abs(p.x) + std::abs(p.y) : std::abs(p.x - v.x) + std::abs(p.y - v.y);
    };
    prediction.hybrid = distance(grid.At(x, y - 1).intra, a) > kHybridThreshold ||
                        distance(grid.At(x - 1, y).intra, c) > kHybridThreshold;
  }
  return prediction;
}

void CodeVector(const VectorPrediction& prediction, MotionVector vector, MacroblockCode& code) {
  auto differential = [&](MotionVector predictor) {
    return MotionVector{Wrap(vector.x - predictor.x, kRangeX) / 2, Wrap(vector.y - predictor.y, kRangeY) / 2};
  };
  if (!prediction.hybrid) {
    code.hybridBit = -1;
    code.differential = differential(prediction.predictor);
    return;
  }
  MotionVector fromAbove = differential(prediction.above);
  MotionVector fromLeft = differential(prediction.left);
  bool useAbove = VectorCostEstimate(fromAbove) < VectorCostEstimate(fromLeft);
  code.hybridBit = useAbove ? 1 : 0;
  code.differential = useAbove ? fromAbove : fromLeft;
}

int MvDataBits(int table, MotionVector differential, bool intra, bool hasCoefficients) {
  int index = intra ? kIntraIndex : JointIndex(differential);
  int bits = kMvDiffCodes[table][Symbol(index, hasCoefficients)].length;
  if (index == kEscapeIndex) return bits + 8 + 7;
  if (index == kIntraIndex) return bits;
  return bits + ComponentBits(differential.x) + ComponentBits(differential.y);
}

void WriteMvData(BitWriter& writer, int table, MotionVector differential, bool intra, bool hasCoefficients) {
  int index = intra ? kIntraIndex : JointIndex(differential);
  writer.Put(kMvDiffCodes[table][Symbol(index, hasCoefficients)]);
  if (index == kIntraIndex) return;
  if (index == kEscapeIndex) {
    // Raw components modulo the range: 8 bits for x, 7 for y in half samples.
    writer.Put(static_cast<uint32_t>(differential.x) & 0xFF, 8);
    writer.Put(static_cast<uint32_t>(differential.y) & 0x7F, 7);
    return;
  }
  WriteComponent(writer, differential.x);
  WriteComponent(writer, differential.y);
}

int VectorCostEstimate(MotionVector differential) {
  if (differential == MotionVector{}) return 1;
  return MvDataBits(0, differential, false, false);
}

}  // namespace tessel::platform::wmv3
