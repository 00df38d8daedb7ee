// Motion-compensated prediction of one macroblock from the reference picture, exactly as
// a decoder forms it for 1-MV half-pel bicubic pictures: luma at half-sample phases of
// the bicubic filter with the picture's rounding control, chroma bilinear at the
// rounded-down chroma vector (fast UV motion compensation), source positions clipped to
// one macroblock beyond the picture.
#pragma once

#include <cstdint>

#include "wmvencod/frame_planes.h"

namespace tessel::platform::wmv3 {

struct MotionVector {
  int x = 0;  // quarter samples; even in half-pel pictures
  int y = 0;

  bool operator==(const MotionVector&) const = default;
};

// The chroma vector (quarter chroma samples) of a luma vector.
MotionVector ChromaVector(MotionVector luma);

// The reference luma at its four half-sample phases: the reference itself and the
// bicubic interpolations half a sample to the right, below, and both, as a decoder
// computes them with the picture's rounding control.
class HalfSamplePlanes {
 public:
  // Once per size: the coded luma size.
  void Allocate(int width, int height);
  // Interpolates from reference (edges extended, must outlive this). The rows to fill
  // are split into Bands() bands that may be built on different threads.
  void Use(const Plane& reference, bool roundingControl);
  int Bands() const;
  void BuildBand(int band);

  // dx, dy: 0 or 1 half sample.
  const Plane& Phase(int dx, int dy) const;
  bool RoundingControl() const { return roundingControl_; }

 private:
  const Plane* reference_ = nullptr;
  bool roundingControl_ = false;
  Plane right_;
  Plane below_;
  Plane diagonal_;
};

// Luma 16x16 at the vector into out (stride 16).
void PredictLuma(const HalfSamplePlanes& reference, int mbX, int mbY, MotionVector vector, uint8_t* out);

// Prediction of macroblock (mbX, mbY) into luma[256] and chroma[2][64] (rows of 16
// and 8). chroma: the reference's chroma planes.
void PredictMacroblock(const HalfSamplePlanes& luma, const FramePlanes& reference, int mbX, int mbY,
                       MotionVector vector, uint8_t* lumaOut, uint8_t* cb, uint8_t* cr);

}  // namespace tessel::platform::wmv3
