// Rate control: picks each picture's quantiser so that the stream holds the asked
// average bit rate. A model per picture type (bits times step stays roughly constant)
// predicts the step for the picture's share of the budget; the share follows the
// surplus or debt of the bits spent so far.
#pragma once

#include <cstdint>

#include "wmvencod/quantizer.h"

namespace tessel::platform::wmv3 {

class RateControl {
 public:
  // bitRate in bits per second; frame rate rateNum / rateDen; key frames every
  // keySpacing pictures; pixels per picture for the first guess.
  RateControl(int64_t bitRate, int rateNum, int rateDen, int keySpacing, int64_t pixels);

  // The bits this picture should take.
  double TargetBits(bool key) const;
  // The step (2..62) expected to give targetBits for this picture type.
  int StepFor(bool key, double targetBits) const;
  // Records what a picture took at a step.
  void Update(bool key, int step, int64_t bits);

 private:
  double frameBits_;  // the budget of an average picture
  double keyWeight_;  // a key picture's budget in average budgets
  double interWeight_;
  double balance_ = 0;    // bits spent beyond the budget so far (negative: saved)
  double keyComplexity_;  // bits times step
  double interComplexity_;
  bool interSeen_ = false;
  int lastInterStep_ = 0;
};

}  // namespace tessel::platform::wmv3
