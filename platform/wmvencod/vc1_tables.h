// The code tables of the WMV3 (VC-1 Simple and Main profile) bitstream that the encoder
// writes with. The numbers are facts of the standard, transcribed into
// ac_coding_tables.cpp and picture_tables.cpp (their sources are named there).
#pragma once

#include <cstdint>

namespace tessel::platform::wmv3 {

// One variable-length code: the `length` low bits of `code`, most significant first.
struct VlcCode {
  uint32_t code;
  uint8_t length;
};

struct RunLevel {
  uint8_t run;
  uint8_t level;
};

// One of the eight AC coefficient coding sets. Code `size - 1` is the escape; codes
// from `firstLast` on stand for the last coefficient of a block. The delta arrays are
// the level offsets (indexed by run) and run offsets (indexed by level) of escape modes
// 1 and 2, each for coefficients that are not last and that are last.
struct AcCodingSet {
  const VlcCode* codes;
  const RunLevel* runLevel;
  int size;
  int firstLast;
  const int8_t* deltaLevel;
  int deltaLevelSize;
  const int8_t* lastDeltaLevel;
  int lastDeltaLevelSize;
  const int8_t* deltaRun;
  int deltaRunSize;
  const int8_t* lastDeltaRun;
  int lastDeltaRunSize;
};

// Coding sets in the order the bitstream's index selects them from.
enum CodingSet {
  kHighMotionIntra = 0,
  kHighMotionInter,
  kLowMotionIntra,
  kLowMotionInter,
  kMidRateIntra,
  kMidRateInter,
  kHighRateIntra,
  kHighRateInter,
};
extern const AcCodingSet kAcCodingSets[8];

// DC differential codes, luma and chroma, for DC table 0 and 1; code 119 is the escape.
extern const VlcCode kDcLumaCodes0[120];
extern const VlcCode kDcChromaCodes0[120];
extern const VlcCode kDcLumaCodes1[120];
extern const VlcCode kDcChromaCodes1[120];
inline constexpr int kDcEscape = 119;

// Coded block pattern of intra macroblocks in I-pictures (by the six pattern bits).
extern const VlcCode kIntraCbpCodes[64];
// Coded block pattern of P-picture macroblocks, by table index and pattern.
extern const VlcCode kInterCbpCodes[4][64];
// Motion vector differentials (MVDATA), by table index and joint index.
extern const VlcCode kMvDiffCodes[4][73];

// Zig-zag scans to raster positions (row * 8 + column): inter, intra, intra with
// prediction from above (horizontal), intra with prediction from the left (vertical).
extern const uint8_t kZigzag[4][64];
enum Scan { kScanInter = 0, kScanIntra, kScanIntraTop, kScanIntraLeft };

// DC quantiser step by picture quantiser (index 0 unused).
extern const uint8_t kDcScale[32];

}  // namespace tessel::platform::wmv3
