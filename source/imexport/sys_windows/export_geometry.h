// The geometry of a movie as the platform's media types carry it: the frame size after
// the container's alignment, and the frame rate and pixel aspect as whole-number ratios.
// Each number goes to the platform as its low 32 bits.
#pragma once

#include <guiddef.h>

#include "vorna/apibase.h"

namespace tessel {

struct FrameSize {
  vorna::Int width = 0;
  vorna::Int height = 0;
};

// The size the platform is told for a picture: the width rounded up to a multiple of 16
// in MPEG-4 and of 2 elsewhere (no container type included), the height to a multiple
// of 2.
FrameSize AlignFrameSize(const GUID& container, vorna::Int width, vorna::Int height);

struct WholeRatio {
  vorna::Int64 numerator = 0;
  vorna::Int64 denominator = 1;
};

// fps in millionths, then only factors of ten taken out: 25 gives 25/1, 29.97 gives
// 2997/100, 23.976 gives 23976/1000, 0.5 gives 5/10; 0 gives 0/1000000.
WholeRatio FpsToRatio(vorna::Float64 fps);

// value in thousandths over 1000, reduced by their greatest common divisor: 1.5 gives
// 3/2, 1.0667 gives 1067/1000; 0 gives 0/1. Values beyond 32 bits are scaled down to
// stay within what a Float64 counts exactly.
WholeRatio AspectToRatio(vorna::Float64 value);

}  // namespace tessel
