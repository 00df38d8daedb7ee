// Motion-compensated prediction of one macroblock from the reference picture, exactly as
// a decoder forms it for 1-MV half-pel bilinear pictures: luma at half-pel with the
// picture's rounding control, chroma at the rounded-down chroma vector (fast UV motion
// compensation), source positions clipped to one macroblock beyond the picture.
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

// Prediction of macroblock (mbX, mbY) into luma[256] and chroma[2][64] (rows of 16
// and 8). roundingControl: the picture's RND bit.
void PredictMacroblock(const FramePlanes& reference, int mbX, int mbY, MotionVector vector, bool roundingControl,
                       uint8_t* luma, uint8_t* cb, uint8_t* cr);

// Luma only, for the motion search: 16x16 at the half-pel vector into out (stride 16).
void PredictLuma(const Plane& reference, int mbX, int mbY, MotionVector vector, bool roundingControl, uint8_t* out);

}  // namespace tessel::platform::wmv3
