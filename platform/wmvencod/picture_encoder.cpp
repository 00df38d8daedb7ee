#include "wmvencod/picture_encoder.h"

#include <algorithm>
#include <cstring>

#include "wmvencod/intra_prediction.h"
#include "wmvencod/motion_search.h"
#include "wmvencod/mv_prediction.h"
#include "wmvencod/skip_plane.h"
#include "wmvencod/transform.h"
#include "wmvencod/vc1_tables.h"

namespace tessel::platform::wmv3 {
namespace {

constexpr int kIntraBias = 512;  // SAD an intra macroblock must save over the best vector

// Where block `block` of macroblock (x, y) lies in its plane.
struct BlockPlace {
  int plane, x, y;
};
BlockPlace PlaceOf(int x, int y, int block) {
  if (block >= 4) return {block - 3, 8 * x, 8 * y};
  return {0, 16 * x + 8 * (block & 1), 16 * y + 8 * (block >> 1)};
}

void LoadBlock(const Plane& plane, int x, int y, int16_t* out) {
  for (int row = 0; row < 8; ++row) {
    const uint8_t* samples = plane.At(x, y + row);
    for (int column = 0; column < 8; ++column) out[8 * row + column] = samples[column];
  }
}

// Adds values to the prediction (or to `offset` without one) and clamps into the plane.
void StoreBlock(const int16_t* values, const uint8_t* prediction, int predictionStride, int offset, Plane& plane, int x,
                int y) {
  for (int row = 0; row < 8; ++row) {
    uint8_t* target = plane.At(x, y + row);
    for (int column = 0; column < 8; ++column) {
      int base = prediction ? prediction[row * predictionStride + column] : offset;
      target[column] = static_cast<uint8_t>(std::clamp(base + values[8 * row + column], 0, 255));
    }
  }
}

bool AnyNonzero(const int16_t* levels, int start) {
  for (int i = start; i < 64; ++i)
    if (levels[i]) return true;
  return false;
}

}  // namespace

// What one row's macroblocks cost under each table choice. acA/acB: luma and chroma
// blocks of I-pictures; intra luma blocks and all other blocks of P-pictures.
struct PictureEncoder::RowCost {
  BlockCost acA[3];
  BlockCost acB[3];
  int dc[2] = {};
  int mv[4] = {};
  int cbp[4] = {};
};

PictureEncoder::PictureEncoder(int macroblocksWide, int macroblocksHigh, RowPool& pool) : pool_(pool) {
  grid_.Resize(macroblocksWide, macroblocksHigh);
  halfSamples_.Allocate(16 * macroblocksWide, 16 * macroblocksHigh);
  previousVectors_.assign(grid_.blocks.size(), MotionVector{});
}

std::vector<uint8_t> PictureEncoder::Encode(const FramePlanes& source, const FramePlanes* reference,
                                            bool roundingControl, PictureChoices choices, FramePlanes& reconstruction) {
  bool pPicture = !choices.key;
  const Quantizer quantizer = choices.quantizer;
  if (pPicture) {
    halfSamples_.Use(reference->planes[0], roundingControl);
    pool_.Run(halfSamples_.Bands(), [&](int band) { halfSamples_.BuildBand(band); });
  }
  pool_.Run(grid_.height,
            [&](int y) { AnalyseRow(y, source, pPicture ? reference : nullptr, quantizer, reconstruction); });
  pool_.Run(grid_.height, [&](int y) { CodeRow(y, pPicture, quantizer); });
  std::vector<RowCost> costs(grid_.height);
  pool_.Run(grid_.height, [&](int y) { costs[y] = CostRow(y, pPicture, quantizer); });

  EscapeLengths escape;
  int firstEscapeRow = grid_.height;
  ChooseTables(costs, choices, escape, firstEscapeRow);
  BitWriter skipPlane;
  if (pPicture) {
    std::vector<uint8_t> skipped(grid_.codes.size());
    for (size_t i = 0; i < skipped.size(); ++i) skipped[i] = grid_.codes[i].skipped;
    choices.skipBitsInMacroblocks = WriteSkipPlane(skipPlane, skipped, grid_.width, grid_.height);
  }

  std::vector<BitWriter> rows(grid_.height);
  pool_.Run(grid_.height, [&](int y) {
    EscapeLengths rowEscape = escape;
    rowEscape.announced = y != firstEscapeRow;
    for (int x = 0; x < grid_.width; ++x) {
      if (pPicture)
        WriteInterPictureMacroblock(rows[y], grid_, x, y, choices, rowEscape);
      else
        WriteIntraPictureMacroblock(rows[y], grid_, x, y, choices, rowEscape);
    }
  });
  BitWriter picture;
  WritePictureHeader(picture, choices, skipPlane);
  for (const BitWriter& row : rows) picture.Append(row);
  // A decoder reading raw skip bits in the macroblock layer wants more than one bit
  // left before each macroblock; a last macroblock of one bit needs the padding bit.
  picture.PutBit(false);

  if (pPicture) {
    for (size_t i = 0; i < grid_.blocks.size(); ++i) previousVectors_[i] = grid_.blocks[i].vector;
  } else {
    std::fill(previousVectors_.begin(), previousVectors_.end(), MotionVector{});
  }
  return picture.Finish();
}

void PictureEncoder::AnalyseRow(int y, const FramePlanes& source, const FramePlanes* reference,
                                const Quantizer& quantizer, FramePlanes& reconstruction) {
  int lambda = std::max(1, quantizer.Step() / 2);
  for (int x = 0; x < grid_.width; ++x) {
    if (!reference) {
      AnalyseIntra(x, y, source, false, quantizer, reconstruction);
      continue;
    }
    MotionVector left = x > 0 ? grid_.At(x - 1, y).vector : MotionVector{};
    MotionVector candidates[2] = {left, previousVectors_[static_cast<size_t>(y) * grid_.width + x]};
    SearchRequest request;
    request.source = &source.planes[0];
    request.reference = &halfSamples_;
    request.mbX = x;
    request.mbY = y;
    request.lambda = lambda;
    request.expected = left;
    request.candidates = candidates;
    request.candidateCount = 2;
    SearchResult found = SearchMotion(request);
    if (IntraActivity(source.planes[0], x, y) + kIntraBias < found.sad)
      AnalyseIntra(x, y, source, true, quantizer, reconstruction);
    else
      AnalyseInter(x, y, found.vector, source, *reference, quantizer, reconstruction);
  }
}

void PictureEncoder::AnalyseIntra(int x, int y, const FramePlanes& source, bool pPicture, const Quantizer& quantizer,
                                  FramePlanes& reconstruction) {
  Macroblock& mb = grid_.At(x, y);
  mb.intra = true;
  mb.vector = {};
  // Intra blocks of P-pictures code samples less 128.
  int offset = pPicture ? 128 : 0;
  for (int block = 0; block < 6; ++block) {
    BlockPlace place = PlaceOf(x, y, block);
    int16_t samples[64];
    int32_t coefficients[64];
    LoadBlock(source.planes[place.plane], place.x, place.y, samples);
    for (int16_t& sample : samples) sample = static_cast<int16_t>(sample - offset);
    ForwardTransform8x8(samples, coefficients);
    QuantizeIntra(coefficients, quantizer, mb.levels[block]);
    DequantizeIntra(mb.levels[block], quantizer, samples);
    InverseTransform8x8(samples);
    StoreBlock(samples, nullptr, 0, offset, reconstruction.planes[place.plane], place.x, place.y);
  }
}

void PictureEncoder::AnalyseInter(int x, int y, MotionVector vector, const FramePlanes& source,
                                  const FramePlanes& reference, const Quantizer& quantizer,
                                  FramePlanes& reconstruction) {
  Macroblock& mb = grid_.At(x, y);
  mb.intra = false;
  mb.vector = vector;
  uint8_t luma[256], cb[64], cr[64];
  PredictMacroblock(halfSamples_, reference, x, y, vector, luma, cb, cr);
  for (int block = 0; block < 6; ++block) {
    BlockPlace place = PlaceOf(x, y, block);
    const uint8_t* prediction = block < 4 ? luma + 8 * (block & 1) + 128 * (block >> 1) : (block == 4 ? cb : cr);
    int predictionStride = block < 4 ? 16 : 8;
    int16_t residual[64];
    int32_t coefficients[64];
    LoadBlock(source.planes[place.plane], place.x, place.y, residual);
    for (int i = 0; i < 64; ++i)
      residual[i] = static_cast<int16_t>(residual[i] - prediction[(i >> 3) * predictionStride + (i & 7)]);
    ForwardTransform8x8(residual, coefficients);
    if (QuantizeInter(coefficients, quantizer, mb.levels[block]) && WorthCoding(mb.levels[block])) {
      DequantizeInter(mb.levels[block], quantizer, residual);
      InverseTransform8x8(residual);
    } else {
      std::memset(mb.levels[block], 0, sizeof(mb.levels[block]));
      std::memset(residual, 0, sizeof(residual));
    }
    StoreBlock(residual, prediction, predictionStride, 0, reconstruction.planes[place.plane], place.x, place.y);
  }
}

void PictureEncoder::CodeRow(int y, bool pPicture, const Quantizer& quantizer) {
  for (int x = 0; x < grid_.width; ++x) {
    const Macroblock& mb = grid_.At(x, y);
    MacroblockCode& code = grid_.CodeAt(x, y);
    code.skipped = false;
    code.hybridBit = -1;
    code.differential = {};
    if (mb.intra) {
      PredictIntraMacroblock(grid_, x, y, quantizer, pPicture);
      continue;
    }
    code.codedBlocks = 0;
    for (int block = 0; block < 6; ++block)
      if (AnyNonzero(mb.levels[block], 0)) code.codedBlocks |= BlockBit(block);
    CodeVector(PredictVector(grid_, x, y), mb.vector, code);
    code.skipped = code.codedBlocks == 0 && code.differential == MotionVector{};
  }
}

PictureEncoder::RowCost PictureEncoder::CostRow(int y, bool pPicture, const Quantizer& quantizer) const {
  RowCost cost;
  CodingSets sets[3];
  for (int option = 0; option < 3; ++option) sets[option] = CodingSetsFor(option, quantizer);
  for (int x = 0; x < grid_.width; ++x) {
    const Macroblock& mb = grid_.At(x, y);
    const MacroblockCode& code = grid_.CodeAt(x, y);
    if (code.skipped) continue;
    if (pPicture) {
      bool hasCoefficients = code.codedBlocks != 0;
      for (int table = 0; table < 4; ++table) {
        cost.mv[table] += MvDataBits(table, code.differential, mb.intra, hasCoefficients);
        if (hasCoefficients) cost.cbp[table] += kInterCbpCodes[table][code.codedBlocks].length;
      }
    }
    for (int block = 0; block < 6; ++block) {
      if (mb.intra)
        for (int table = 0; table < 2; ++table)
          cost.dc[table] += DcBits(table, block < 4, code.dcDifferential[block], quantizer);
      if (!(code.codedBlocks & BlockBit(block))) continue;
      const int16_t* coefficients = mb.intra ? code.coded[block] : mb.levels[block];
      const uint8_t* scan = kZigzag[mb.intra ? static_cast<int>(code.scan[block]) : kScanInter];
      int start = mb.intra ? 1 : 0;
      bool groupA = mb.intra && block < 4;
      for (int option = 0; option < 3; ++option) {
        int set = groupA ? sets[option].intra : (pPicture || block >= 4 ? sets[option].inter : sets[option].intra);
        BlockCost blockCost = AcBlockCost(set, scan, coefficients, start);
        (groupA ? cost.acA[option] : cost.acB[option]).Add(blockCost);
      }
    }
  }
  return cost;
}

void PictureEncoder::ChooseTables(const std::vector<RowCost>& costs, PictureChoices& choices, EscapeLengths& escape,
                                  int& firstEscapeRow) const {
  RowCost total;
  for (const RowCost& row : costs) {
    for (int option = 0; option < 3; ++option) {
      total.acA[option].Add(row.acA[option]);
      total.acB[option].Add(row.acB[option]);
    }
    for (int table = 0; table < 2; ++table) total.dc[table] += row.dc[table];
    for (int table = 0; table < 4; ++table) {
      total.mv[table] += row.mv[table];
      total.cbp[table] += row.cbp[table];
    }
  }
  auto cheapest = [](const int* bits, int count) {
    return static_cast<int>(std::min_element(bits, bits + count) - bits);
  };
  int a[3], b[3], both[3];
  for (int option = 0; option < 3; ++option) {
    a[option] = total.acA[option].bits;
    b[option] = total.acB[option].bits;
    both[option] = a[option] + b[option];
  }
  if (choices.key) {
    choices.lumaAcTable = cheapest(a, 3);
    choices.acTable = cheapest(b, 3);
  } else {
    choices.acTable = cheapest(both, 3);
    choices.lumaAcTable = choices.acTable;
    choices.mvTable = cheapest(total.mv, 4);
    choices.cbpTable = cheapest(total.cbp, 4);
  }
  choices.dcTable = cheapest(total.dc, 2);

  BlockCost escapes = total.acA[choices.lumaAcTable];
  escapes.Add(total.acB[choices.acTable]);
  escape = EscapeLengthsFor(escapes.maxEscapeRun, escapes.maxEscapeLevel, choices.quantizer.pq < 8);
  for (size_t y = 0; y < costs.size(); ++y) {
    if (costs[y].acA[choices.lumaAcTable].maxEscapeRun >= 0 || costs[y].acB[choices.acTable].maxEscapeRun >= 0) {
      firstEscapeRow = static_cast<int>(y);
      break;
    }
  }
}

}  // namespace tessel::platform::wmv3
