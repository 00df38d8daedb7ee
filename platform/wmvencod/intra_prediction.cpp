#include "wmvencod/intra_prediction.h"

#include <cstdlib>
#include <cstring>

#include "wmvencod/vc1_tables.h"

namespace tessel::platform::wmv3 {
namespace {

// A block position: the macroblock and its block number.
struct BlockAt {
  int x, y, block;
};

// The block dx, dy blocks away from `block` of macroblock (x, y); false outside the
// picture. Luma blocks step through the luma grid, chroma blocks through their own.
bool Neighbour(const MacroblockGrid& grid, int x, int y, int block, int dx, int dy, BlockAt* out) {
  if (block >= 4) {
    *out = {x + dx, y + dy, block};
  } else {
    int bx = 2 * x + (block & 1) + dx, by = 2 * y + (block >> 1) + dy;
    if (bx < 0 || by < 0) return false;
    *out = {bx >> 1, by >> 1, ((by & 1) << 1) | (bx & 1)};
  }
  return out->x >= 0 && out->y >= 0 && out->x < grid.width && out->y < grid.height;
}

// The DC predictor of edges in I-pictures: the DC level of mid-grey at this scale.
int EdgeDc(int dcScale) { return (1024 + dcScale / 2) / dcScale; }

enum class Direction { kLeft, kTop };

struct DcPrediction {
  int predictor = 0;
  Direction direction = Direction::kLeft;
  bool useAc = true;                // AC prediction can apply to this block
  const int16_t* source = nullptr;  // the predicting block's levels, null for zeros
};

DcPrediction PredictIPicture(const MacroblockGrid& grid, int x, int y, int block, int dcScale) {
  BlockAt top{}, left{}, topLeft{};
  bool hasTop = Neighbour(grid, x, y, block, 0, -1, &top);
  bool hasLeft = Neighbour(grid, x, y, block, -1, 0, &left);
  bool hasTopLeft = hasTop && hasLeft && Neighbour(grid, x, y, block, -1, -1, &topLeft);
  int edge = EdgeDc(dcScale);
  const int16_t* topLevels = hasTop ? grid.At(top.x, top.y).levels[top.block] : nullptr;
  const int16_t* leftLevels = hasLeft ? grid.At(left.x, left.y).levels[left.block] : nullptr;
  int a = topLevels ? topLevels[0] : edge;
  int c = leftLevels ? leftLevels[0] : edge;
  int b = hasTopLeft ? grid.At(topLeft.x, topLeft.y).levels[topLeft.block][0] : edge;
  if (std::abs(a - b) <= std::abs(b - c)) return {c, Direction::kLeft, true, leftLevels};
  return {a, Direction::kTop, true, topLevels};
}

DcPrediction PredictPPicture(const MacroblockGrid& grid, int x, int y, int block) {
  BlockAt top{}, left{}, topLeft{};
  bool aAvailable = Neighbour(grid, x, y, block, 0, -1, &top) && grid.At(top.x, top.y).intra;
  bool cAvailable = Neighbour(grid, x, y, block, -1, 0, &left) && grid.At(left.x, left.y).intra;
  const int16_t* topLevels = aAvailable ? grid.At(top.x, top.y).levels[top.block] : nullptr;
  const int16_t* leftLevels = cAvailable ? grid.At(left.x, left.y).levels[left.block] : nullptr;
  if (cAvailable && aAvailable) {
    Neighbour(grid, x, y, block, -1, -1, &topLeft);
    const Macroblock& corner = grid.At(topLeft.x, topLeft.y);
    int b = corner.intra ? corner.levels[topLeft.block][0] : 0;
    if (std::abs(topLevels[0] - b) <= std::abs(b - leftLevels[0]))
      return {leftLevels[0], Direction::kLeft, true, leftLevels};
    return {topLevels[0], Direction::kTop, true, topLevels};
  }
  if (cAvailable) return {leftLevels[0], Direction::kLeft, true, leftLevels};
  if (aAvailable) return {topLevels[0], Direction::kTop, true, topLevels};
  return {0, Direction::kLeft, false, nullptr};
}

// Positions of the first column (left prediction) or first row (top prediction).
int EdgePosition(Direction direction, int k) { return direction == Direction::kLeft ? 8 * k : k; }

// A cost proxy of the seven predicted positions: magnitude plus one per nonzero value.
int EdgeCost(const int16_t* values, Direction direction, const int16_t* predictor) {
  int cost = 0;
  for (int k = 1; k < 8; ++k) {
    int position = EdgePosition(direction, k);
    int value = values[position] - (predictor ? predictor[position] : 0);
    cost += std::abs(value) + (value != 0 ? 1 : 0);
  }
  return cost;
}

// Whether every predicted difference stays within the levels an escape can carry.
bool PredictionFits(const Macroblock& mb, const DcPrediction* predictions, int maxLevel) {
  for (int block = 0; block < 6; ++block) {
    const DcPrediction& p = predictions[block];
    if (!p.useAc || !p.source) continue;
    for (int k = 1; k < 8; ++k) {
      int position = EdgePosition(p.direction, k);
      if (std::abs(mb.levels[block][position] - p.source[position]) > maxLevel) return false;
    }
  }
  return true;
}

bool HasAc(const int16_t* coded) {
  for (int i = 1; i < 64; ++i)
    if (coded[i]) return true;
  return false;
}

}  // namespace

void PredictIntraMacroblock(MacroblockGrid& grid, int x, int y, const Quantizer& quantizer, bool pPicture) {
  const Macroblock& mb = grid.At(x, y);
  MacroblockCode& code = grid.CodeAt(x, y);
  DcPrediction predictions[6];
  int withPrediction = 0, without = 0;
  for (int block = 0; block < 6; ++block) {
    DcPrediction& p = predictions[block];
    p = pPicture ? PredictPPicture(grid, x, y, block) : PredictIPicture(grid, x, y, block, quantizer.DcScale());
    code.dcDifferential[block] = static_cast<int16_t>(mb.levels[block][0] - p.predictor);
    without += EdgeCost(mb.levels[block], p.direction, nullptr);
    withPrediction += EdgeCost(mb.levels[block], p.direction, p.useAc ? p.source : nullptr);
  }
  code.acPrediction = withPrediction < without && PredictionFits(mb, predictions, quantizer.MaxLevel());
  code.codedBlocks = 0;
  for (int block = 0; block < 6; ++block) {
    const DcPrediction& p = predictions[block];
    int16_t* coded = code.coded[block];
    std::memcpy(coded, mb.levels[block], sizeof(code.coded[block]));
    bool predicted = code.acPrediction && p.useAc;
    if (predicted && p.source)
      for (int k = 1; k < 8; ++k) coded[EdgePosition(p.direction, k)] -= p.source[EdgePosition(p.direction, k)];
    if (pPicture)
      code.scan[block] = kScanInter;
    else if (!code.acPrediction)
      code.scan[block] = kScanIntra;
    else
      code.scan[block] = p.direction == Direction::kTop ? kScanIntraTop : kScanIntraLeft;
    if (HasAc(coded)) code.codedBlocks |= BlockBit(block);
  }
}

bool PredictedCodedBlock(const MacroblockGrid& grid, int x, int y, int block) {
  auto coded = [&](int dx, int dy) {
    BlockAt at{};
    if (!Neighbour(grid, x, y, block, dx, dy, &at)) return false;
    return (grid.CodeAt(at.x, at.y).codedBlocks & BlockBit(at.block)) != 0;
  };
  bool a = coded(-1, 0), b = coded(-1, -1), c = coded(0, -1);
  return b == c ? a : c;
}

}  // namespace tessel::platform::wmv3
