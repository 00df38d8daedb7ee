// Block-matching motion search of one macroblock: candidate vectors, an integer
// diamond search and a half-pel refinement, by sum of absolute differences plus a rate
// term for the vector.
#pragma once

#include <cstdint>

#include "wmvencod/frame_planes.h"
#include "wmvencod/motion_compensation.h"

namespace tessel::platform::wmv3 {

struct SearchResult {
  MotionVector vector;
  int cost = 0;  // SAD plus the vector's rate term
  int sad = 0;
};

struct SearchRequest {
  const Plane* source = nullptr;  // the picture being coded
  const HalfSamplePlanes* reference = nullptr;
  int mbX = 0;
  int mbY = 0;
  int lambda = 1;         // cost of one bit of vector, in SAD units
  MotionVector expected;  // the likely predictor; rate is counted from it
  const MotionVector* candidates = nullptr;
  int candidateCount = 0;
};

SearchResult SearchMotion(const SearchRequest& request);

// Sum of absolute differences of two 16x16 blocks.
int Sad16(const uint8_t* a, ptrdiff_t aStride, const uint8_t* b, ptrdiff_t bStride);

// Activity of the source macroblock's luma: the sum of absolute deviations of each 8x8
// block from its mean, the cost the search compares intra coding by.
int IntraActivity(const Plane& source, int mbX, int mbY);

}  // namespace tessel::platform::wmv3
