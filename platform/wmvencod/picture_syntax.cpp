#include "wmvencod/picture_syntax.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "wmvencod/intra_prediction.h"
#include "wmvencod/mv_prediction.h"
#include "wmvencod/vc1_tables.h"

namespace tessel::platform::wmv3 {
namespace {

constexpr int kUniformQuantizer = 3;

const VlcCode* DcCodes(int dcTable, bool luma) {
  if (dcTable == 0) return luma ? kDcLumaCodes0 : kDcChromaCodes0;
  return luma ? kDcLumaCodes1 : kDcChromaCodes1;
}

// Extra low bits of DC differentials at the finest quantisers.
int DcExtraBits(const Quantizer& quantizer) { return quantizer.pq <= 2 ? 3 - quantizer.pq : 0; }

void WriteDc(BitWriter& writer, int dcTable, bool luma, int differential, const Quantizer& quantizer) {
  const VlcCode* codes = DcCodes(dcTable, luma);
  int magnitude = std::abs(differential);
  if (magnitude == 0) {
    writer.Put(codes[0]);
    return;
  }
  int m = DcExtraBits(quantizer);
  int biased = magnitude + (1 << m) - 1;
  int index = biased >> m;
  if (index < kDcEscape) {
    writer.Put(codes[index]);
    writer.Put(static_cast<uint32_t>(biased & ((1 << m) - 1)), m);
  } else {
    writer.Put(codes[kDcEscape]);
    writer.Put(static_cast<uint32_t>(magnitude), 8 + m);
  }
  writer.PutBit(differential < 0);
}

// decode012: 0 -> "0", 1 -> "10", 2 -> "11".
void WriteTableIndex(BitWriter& writer, int index) {
  if (index == 0)
    writer.PutBit(false);
  else
    writer.Put(static_cast<uint32_t>(index + 1), 2);
}

void WriteIntraBlock(BitWriter& writer, const MacroblockCode& code, int block, int codingSet,
                     const PictureChoices& choices, EscapeLengths& escape) {
  WriteDc(writer, choices.dcTable, block < 4, code.dcDifferential[block], choices.quantizer);
  if (code.codedBlocks & BlockBit(block))
    WriteAcBlock(writer, codingSet, kZigzag[code.scan[block]], code.coded[block], 1, escape, choices.quantizer.pq < 8);
}

}  // namespace

std::array<uint8_t, 4> SequenceHeader(const SequenceSettings& settings) {
  int frameRateCode = std::clamp(static_cast<int>(std::lround((settings.framesPerSecond - 2) / 4)), 0, 7);
  int bitRateCode = std::clamp(static_cast<int>((settings.bitRate / 1000 - 32) / 64), 0, 31);
  BitWriter writer;
  writer.Put(settings.mainProfile ? 1 : 0, 2);  // PROFILE
  writer.Put(0, 2);                             // reserved: no old interlace, no sprites
  writer.Put(static_cast<uint32_t>(frameRateCode), 3);
  writer.Put(static_cast<uint32_t>(bitRateCode), 5);
  writer.PutBit(false);              // LOOPFILTER
  writer.PutBit(false);              // reserved
  writer.PutBit(false);              // MULTIRES
  writer.PutBit(true);               // reserved: the standard transform
  writer.PutBit(true);               // FASTUVMC
  writer.PutBit(false);              // EXTENDED_MV
  writer.Put(0, 2);                  // DQUANT
  writer.PutBit(false);              // VSTRANSFORM
  writer.PutBit(false);              // reserved
  writer.PutBit(false);              // OVERLAP
  writer.PutBit(false);              // SYNCMARKER
  writer.PutBit(false);              // RANGERED
  writer.Put(0, 3);                  // MAXBFRAMES
  writer.Put(kUniformQuantizer, 2);  // QUANTIZER
  writer.PutBit(false);              // FINTERPFLAG
  writer.PutBit(true);               // reserved
  std::vector<uint8_t> bytes = writer.Finish();
  return {bytes[0], bytes[1], bytes[2], bytes[3]};
}

CodingSets CodingSetsFor(int tableIndex, const Quantizer& quantizer) {
  switch (tableIndex) {
    case 1:
      return {kHighMotionIntra, kHighMotionInter};
    case 2:
      return {kMidRateIntra, kMidRateInter};
    default:
      return quantizer.pq <= 8 ? CodingSets{kHighRateIntra, kHighRateInter}
                               : CodingSets{kLowMotionIntra, kLowMotionInter};
  }
}

void WritePictureHeader(BitWriter& writer, const PictureChoices& choices, const BitWriter& skipPlane) {
  const Quantizer& q = choices.quantizer;
  writer.Put(static_cast<uint32_t>(choices.frameCount & 3), 2);  // FRMCNT
  writer.PutBit(!choices.key);                                   // PTYPE
  if (choices.key) writer.Put(0, 7);                             // BF: buffer fullness
  writer.Put(static_cast<uint32_t>(q.pq), 5);                    // PQINDEX
  if (q.pq <= 8) writer.PutBit(q.halfStep);                      // HALFQP
  if (!choices.key) {
    writer.Put(1, 3);  // MVMODE: 1-MV half-pel bicubic
    writer.Append(skipPlane);
    writer.Put(static_cast<uint32_t>(choices.mvTable), 2);
    writer.Put(static_cast<uint32_t>(choices.cbpTable), 2);
  }
  WriteTableIndex(writer, choices.acTable);
  if (choices.key) WriteTableIndex(writer, choices.lumaAcTable);
  writer.PutBit(choices.dcTable != 0);
}

int DcBits(int dcTable, bool luma, int differential, const Quantizer& quantizer) {
  const VlcCode* codes = DcCodes(dcTable, luma);
  int magnitude = std::abs(differential);
  if (magnitude == 0) return codes[0].length;
  int m = DcExtraBits(quantizer);
  int index = (magnitude + (1 << m) - 1) >> m;
  if (index < kDcEscape) return codes[index].length + m + 1;
  return codes[kDcEscape].length + 8 + m + 1;
}

void WriteIntraPictureMacroblock(BitWriter& writer, const MacroblockGrid& grid, int x, int y,
                                 const PictureChoices& choices, EscapeLengths& escape) {
  const MacroblockCode& code = grid.CodeAt(x, y);
  uint8_t pattern = code.codedBlocks;
  for (int block = 0; block < 4; ++block)
    if (PredictedCodedBlock(grid, x, y, block)) pattern ^= BlockBit(block);
  writer.Put(kIntraCbpCodes[pattern]);
  writer.PutBit(code.acPrediction);
  CodingSets luma = CodingSetsFor(choices.lumaAcTable, choices.quantizer);
  CodingSets chroma = CodingSetsFor(choices.acTable, choices.quantizer);
  for (int block = 0; block < 6; ++block)
    WriteIntraBlock(writer, code, block, block < 4 ? luma.intra : chroma.inter, choices, escape);
}

void WriteInterPictureMacroblock(BitWriter& writer, const MacroblockGrid& grid, int x, int y,
                                 const PictureChoices& choices, EscapeLengths& escape) {
  const Macroblock& mb = grid.At(x, y);
  const MacroblockCode& code = grid.CodeAt(x, y);
  if (choices.skipBitsInMacroblocks) writer.PutBit(code.skipped);
  if (code.skipped) {
    if (code.hybridBit >= 0) writer.PutBit(code.hybridBit != 0);
    return;
  }
  bool hasCoefficients = code.codedBlocks != 0;
  WriteMvData(writer, choices.mvTable, code.differential, mb.intra, hasCoefficients);
  if (!mb.intra && code.hybridBit >= 0) writer.PutBit(code.hybridBit != 0);
  if (mb.intra) writer.PutBit(code.acPrediction);
  if (hasCoefficients) writer.Put(kInterCbpCodes[choices.cbpTable][code.codedBlocks]);
  CodingSets sets = CodingSetsFor(choices.acTable, choices.quantizer);
  for (int block = 0; block < 6; ++block) {
    if (mb.intra) {
      WriteIntraBlock(writer, code, block, block < 4 ? sets.intra : sets.inter, choices, escape);
    } else if (code.codedBlocks & BlockBit(block)) {
      WriteAcBlock(writer, sets.inter, kZigzag[kScanInter], mb.levels[block], 0, escape, choices.quantizer.pq < 8);
    }
  }
}

}  // namespace tessel::platform::wmv3
