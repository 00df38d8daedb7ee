#include "export_geometry.h"

#include <mfidl.h>

#include <algorithm>
#include <cmath>

namespace tessel {

using namespace vorna;

FrameSize AlignFrameSize(const GUID& container, Int width, Int height) {
  const Int widthStep = container == MFTranscodeContainerType_MPEG4 ? 16 : 2;
  return {(width + widthStep - 1) / widthStep * widthStep, (height + 1) / 2 * 2};
}

WholeRatio FpsToRatio(Float64 fps) {
  WholeRatio ratio{Int64(fps >= 0 ? fps * 1e6 + 0.001 : fps * 1e6 - 0.001), 1000000};
  while (ratio.numerator != 0 && ratio.numerator % 10 == 0 && ratio.denominator % 10 == 0) {
    ratio.numerator /= 10;
    ratio.denominator /= 10;
  }
  return ratio;
}

namespace {

UInt32 GreatestCommonDivisor(UInt32 a, UInt32 b) {
  while (b != 0) {
    UInt32 rest = a % b;
    a = b;
    b = rest;
  }
  return a;
}

// The remainder loop in Float64, for numerators beyond 32 bits; it stops at a remainder
// below one half.
Float64 GreatestCommonDivisor(Float64 a, Float64 b) {
  while (b >= 0.5) {
    Float64 rest = std::fmod(a, b);
    a = b;
    b = rest;
  }
  return a;
}

}  // namespace

WholeRatio AspectToRatio(Float64 value) {
  const Float64 v = std::clamp(value, -1e15, 1e15);
  Float64 n = std::floor(v * 1000 + 0.5);
  Float64 magnitude = std::fabs(n);
  Float64 d = 1000;
  if (magnitude < 0.001) return {0, 1};
  Float64 g;
  if (magnitude < 2147483520.0) {
    g = GreatestCommonDivisor(UInt32(magnitude), UInt32(1000));
  } else {
    const Float64 scale = 1e18 / std::max(1000.0, magnitude);
    if (scale < 1) {
      n *= scale;
      magnitude *= scale;
      d *= scale;
    }
    d = std::max(d, 1.0);
    g = GreatestCommonDivisor(magnitude, d);
  }
  return {Int64(n / g), Int64(d / g)};
}

}  // namespace tessel
