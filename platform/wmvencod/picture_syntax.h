// The WMV3 syntax the encoder writes: the 4-byte sequence header (the stream's codec
// data), the picture header and the macroblock layer of I- and P-pictures.
#pragma once

#include <array>
#include <cstdint>

#include "wmvencod/ac_coder.h"
#include "wmvencod/bit_writer.h"
#include "wmvencod/macroblock.h"
#include "wmvencod/quantizer.h"

namespace tessel::platform::wmv3 {

struct SequenceSettings {
  bool mainProfile = true;
  double framesPerSecond = 30;
  int64_t bitRate = 0;
};

// Simple or Main profile; frame-rate and bit-rate hints; loop filter, multiresolution,
// extended vectors, variable-size transform, overlap, range reduction and B-frames off;
// the standard transform; fast UV motion compensation; uniform quantiser.
std::array<uint8_t, 4> SequenceHeader(const SequenceSettings& settings);

// Picture-level choices.
struct PictureChoices {
  bool key = true;
  int frameCount = 0;
  Quantizer quantizer;
  int lumaAcTable = 0;  // I-pictures: AC coding set index of luma
  int acTable = 0;      // chroma in I-pictures, every block in P-pictures
  int dcTable = 0;
  int mvTable = 0;                    // P-pictures
  int cbpTable = 0;                   // P-pictures
  bool skipBitsInMacroblocks = true;  // P-pictures: the skip plane is raw
};

// The intra and inter coding sets of a picture's AC table index.
struct CodingSets {
  int intra;
  int inter;
};
CodingSets CodingSetsFor(int tableIndex, const Quantizer& quantizer);

// skipPlane: the coded skip bitplane of a P-picture (see WriteSkipPlane).
void WritePictureHeader(BitWriter& writer, const PictureChoices& choices, const BitWriter& skipPlane);

// Bits of one DC differential with the given table.
int DcBits(int dcTable, bool luma, int differential, const Quantizer& quantizer);

// One macroblock of the grid; its code must be complete.
void WriteIntraPictureMacroblock(BitWriter& writer, const MacroblockGrid& grid, int x, int y,
                                 const PictureChoices& choices, EscapeLengths& escape);
void WriteInterPictureMacroblock(BitWriter& writer, const MacroblockGrid& grid, int x, int y,
                                 const PictureChoices& choices, EscapeLengths& escape);

}  // namespace tessel::platform::wmv3
