// Codes one picture: analysis of every macroblock (motion search, intra or inter,
// transform and quantisation, and the reconstruction a decoder will make), then the
// syntax elements from the neighbours' decisions, the picture's table choices, and the
// bits, row by row on the pool's threads.
#pragma once

#include <cstdint>
#include <vector>

#include "wmvencod/frame_planes.h"
#include "wmvencod/macroblock.h"
#include "wmvencod/picture_syntax.h"
#include "wmvencod/row_pool.h"

namespace tessel::platform::wmv3 {

class PictureEncoder {
 public:
  // The pool must outlive the encoder.
  PictureEncoder(int macroblocksWide, int macroblocksHigh, RowPool& pool);

  // Codes source as a key picture, or as a P-picture predicted from reference (its
  // edges extended) with the rounding control bit. choices.key, frameCount and
  // quantizer are taken; the table choices are made here. Writes what a decoder will
  // show into reconstruction (edges not extended).
  std::vector<uint8_t> Encode(const FramePlanes& source, const FramePlanes* reference, bool roundingControl,
                              PictureChoices choices, FramePlanes& reconstruction);

 private:
  struct RowCost;
  void AnalyseRow(int y, const FramePlanes& source, const FramePlanes* reference, const Quantizer& quantizer,
                  FramePlanes& reconstruction);
  void AnalyseIntra(int x, int y, const FramePlanes& source, bool pPicture, const Quantizer& quantizer,
                    FramePlanes& reconstruction);
  void AnalyseInter(int x, int y, MotionVector vector, const FramePlanes& source, const FramePlanes& reference,
                    const Quantizer& quantizer, FramePlanes& reconstruction);
  void CodeRow(int y, bool pPicture, const Quantizer& quantizer);
  RowCost CostRow(int y, bool pPicture, const Quantizer& quantizer) const;
  void ChooseTables(const std::vector<RowCost>& costs, PictureChoices& choices, EscapeLengths& escape,
                    int& firstEscapeRow) const;

  MacroblockGrid grid_;
  HalfSamplePlanes halfSamples_;               // of the reference of the P-picture being coded
  std::vector<MotionVector> previousVectors_;  // the last P-picture's vectors, search candidates
  RowPool& pool_;
};

}  // namespace tessel::platform::wmv3
