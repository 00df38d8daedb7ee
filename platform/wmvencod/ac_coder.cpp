#include "wmvencod/ac_coder.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdlib>
#include <vector>

#include "wmvencod/vc1_tables.h"

namespace tessel::platform::wmv3 {
namespace {

constexpr int kMaxRun = 64;
constexpr int kMaxTableLevel = 64;

// Code index of (last, run, level) in every coding set, -1 where the set has none.
class CodeIndex {
 public:
  CodeIndex() {
    for (int set = 0; set < 8; ++set) {
      auto& map = index_[set];
      map.fill(-1);
      const AcCodingSet& codes = kAcCodingSets[set];
      for (int i = 0; i < codes.size - 1; ++i) {
        bool last = i >= codes.firstLast;
        map[Slot(last, codes.runLevel[i].run, codes.runLevel[i].level)] = static_cast<int16_t>(i);
      }
    }
  }
  int Find(int set, bool last, int run, int level) const {
    if (run >= kMaxRun || level >= kMaxTableLevel || level <= 0) return -1;
    return index_[set][Slot(last, run, level)];
  }

 private:
  static int Slot(bool last, int run, int level) { return ((last ? kMaxRun : 0) + run) * kMaxTableLevel + level; }
  std::array<std::array<int16_t, 2 * kMaxRun * kMaxTableLevel>, 8> index_;
};

const CodeIndex& Index() {
  static const CodeIndex index;
  return index;
}

int Offset(const int8_t* table, int size, int at) { return at < size ? table[at] : -1; }

// How one (last, run, level) is coded: a table code, or escape mode 1 (level offset),
// 2 (run offset) or 3 (fixed length).
struct Symbol {
  int mode;   // 0 table, 1, 2, 3 escape
  int index;  // table code for modes 0..2
};

Symbol Choose(int set, bool last, int run, int level) {
  const CodeIndex& index = Index();
  int direct = index.Find(set, last, run, level);
  if (direct >= 0) return {0, direct};
  const AcCodingSet& codes = kAcCodingSets[set];
  int levelOffset = last ? Offset(codes.lastDeltaLevel, codes.lastDeltaLevelSize, run)
                         : Offset(codes.deltaLevel, codes.deltaLevelSize, run);
  if (levelOffset > 0) {
    int shifted = index.Find(set, last, run, level - levelOffset);
    if (shifted >= 0) return {1, shifted};
  }
  int runOffset = last ? Offset(codes.lastDeltaRun, codes.lastDeltaRunSize, level)
                       : Offset(codes.deltaRun, codes.deltaRunSize, level);
  if (runOffset >= 0 && run - runOffset - 1 >= 0) {
    int shifted = index.Find(set, last, run - runOffset - 1, level);
    if (shifted >= 0) return {2, shifted};
  }
  return {3, -1};
}

template <typename Visit>
void ForEachRunLevel(const uint8_t* scan, const int16_t* coefficients, int start, Visit visit) {
  int lastPosition = 63;
  while (lastPosition >= start && coefficients[scan[lastPosition]] == 0) --lastPosition;
  int run = 0;
  for (int i = start; i <= lastPosition; ++i) {
    int value = coefficients[scan[i]];
    if (value == 0) {
      ++run;
      continue;
    }
    visit(i == lastPosition, run, value);
    run = 0;
  }
}

}  // namespace

void BlockCost::Add(const BlockCost& other) {
  bits += other.bits;
  maxEscapeRun = std::max(maxEscapeRun, other.maxEscapeRun);
  maxEscapeLevel = std::max(maxEscapeLevel, other.maxEscapeLevel);
}

BlockCost AcBlockCost(int codingSet, const uint8_t* scan, const int16_t* coefficients, int start) {
  BlockCost cost;
  const AcCodingSet& codes = kAcCodingSets[codingSet];
  int escapeBits = codes.codes[codes.size - 1].length;
  ForEachRunLevel(scan, coefficients, start, [&](bool last, int run, int value) {
    int level = std::abs(value);
    Symbol symbol = Choose(codingSet, last, run, level);
    switch (symbol.mode) {
      case 0:
        cost.bits += codes.codes[symbol.index].length + 1;
        break;
      case 1:
        cost.bits += escapeBits + 1 + codes.codes[symbol.index].length + 1;
        break;
      case 2:
        cost.bits += escapeBits + 2 + codes.codes[symbol.index].length + 1;
        break;
      default:
        // The field sizes are not known yet: count typical ones.
        cost.bits += escapeBits + 2 + 1 + 6 + 1 + 8;
        cost.maxEscapeRun = std::max(cost.maxEscapeRun, run);
        cost.maxEscapeLevel = std::max(cost.maxEscapeLevel, level);
        break;
    }
  });
  return cost;
}

EscapeLengths EscapeLengthsFor(int maxRun, int maxLevel, bool shortLevelHeader) {
  EscapeLengths lengths;
  lengths.run = std::clamp(static_cast<int>(std::bit_width(static_cast<unsigned>(std::max(maxRun, 0)))), 3, 6);
  int levelBits = static_cast<int>(std::bit_width(static_cast<unsigned>(std::max(maxLevel, 1))));
  lengths.level = shortLevelHeader ? std::clamp(levelBits, 1, 11) : std::clamp(levelBits, 2, 8);
  return lengths;
}

namespace {

void AnnounceEscapeLengths(BitWriter& writer, const EscapeLengths& escape, bool shortLevelHeader) {
  if (shortLevelHeader) {
    if (escape.level < 8) {
      writer.Put(static_cast<uint32_t>(escape.level), 3);
    } else {
      writer.Put(0, 3);
      writer.Put(static_cast<uint32_t>(escape.level - 8), 2);
    }
  } else {
    // Unary: level - 2 zeros, ended by a one below the longest size.
    writer.Put(0, escape.level - 2);
    if (escape.level < 8) writer.PutBit(true);
  }
  writer.Put(static_cast<uint32_t>(escape.run - 3), 2);
}

}  // namespace

void WriteAcBlock(BitWriter& writer, int codingSet, const uint8_t* scan, const int16_t* coefficients, int start,
                  EscapeLengths& escape, bool shortLevelHeader) {
  const AcCodingSet& codes = kAcCodingSets[codingSet];
  const VlcCode& escapeCode = codes.codes[codes.size - 1];
  ForEachRunLevel(scan, coefficients, start, [&](bool last, int run, int value) {
    int level = std::abs(value);
    bool negative = value < 0;
    Symbol symbol = Choose(codingSet, last, run, level);
    switch (symbol.mode) {
      case 0:
        writer.Put(codes.codes[symbol.index]);
        break;
      case 1:
        writer.Put(escapeCode);
        writer.PutBit(true);
        writer.Put(codes.codes[symbol.index]);
        break;
      case 2:
        writer.Put(escapeCode);
        writer.Put(1, 2);
        writer.Put(codes.codes[symbol.index]);
        break;
      default:
        writer.Put(escapeCode);
        writer.Put(0, 2);
        writer.PutBit(last);
        if (!escape.announced) {
          AnnounceEscapeLengths(writer, escape, shortLevelHeader);
          escape.announced = true;
        }
        writer.Put(static_cast<uint32_t>(run), escape.run);
        writer.PutBit(negative);
        writer.Put(static_cast<uint32_t>(level), escape.level);
        return;
    }
    writer.PutBit(negative);
  });
}

}  // namespace tessel::platform::wmv3
