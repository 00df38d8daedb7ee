#include "wmvencod/rate_control.h"

#include <algorithm>
#include <cmath>

namespace tessel::platform::wmv3 {
namespace {

constexpr double kKeyShare = 4.0;            // a key picture takes this many P budgets
constexpr double kBalanceHorizon = 30.0;     // pictures over which a surplus or debt is repaid
constexpr double kMaxInterStepChange = 1.5;  // factor a P picture's step may move from the last
constexpr double kFirstInterShare = 0.35;    // P complexity against key complexity before any P

}  // namespace

RateControl::RateControl(int64_t bitRate, int rateNum, int rateDen, int keySpacing, int64_t pixels) {
  frameBits_ = static_cast<double>(bitRate) * rateDen / rateNum;
  double spacing = std::max(keySpacing, 1);
  // Shares so that a whole key interval spends exactly its budget.
  interWeight_ = spacing / (spacing - 1 + kKeyShare);
  keyWeight_ = kKeyShare * interWeight_;
  if (spacing <= 1) keyWeight_ = 1;
  // First guess: a picture of moderate detail takes about 1.5 bits per pixel at step 2.
  keyComplexity_ = 3.0 * static_cast<double>(pixels);
  interComplexity_ = keyComplexity_ / 4;
}

double RateControl::TargetBits(bool key) const {
  double share = frameBits_ * (key ? keyWeight_ : interWeight_);
  double repay = balance_ / kBalanceHorizon;
  return std::max(share - repay, share / 4);
}

int RateControl::StepFor(bool key, double targetBits) const {
  double complexity = key ? keyComplexity_ : interComplexity_;
  int step = static_cast<int>(std::lround(complexity / std::max(targetBits, 1.0)));
  step = std::clamp(step, 2, 62);
  if (!key && interSeen_) {
    int low = static_cast<int>(std::floor(lastInterStep_ / kMaxInterStepChange));
    int high = static_cast<int>(std::ceil(lastInterStep_ * kMaxInterStepChange));
    step = std::clamp(step, low, high);
  }
  return std::clamp(step, 2, 62);
}

void RateControl::Update(bool key, int step, int64_t bits) {
  double complexity = static_cast<double>(std::max<int64_t>(bits, 1)) * step;
  if (key) {
    keyComplexity_ = complexity;
    if (!interSeen_) interComplexity_ = kFirstInterShare * complexity;
  } else {
    interComplexity_ = interSeen_ ? 0.5 * interComplexity_ + 0.5 * complexity : complexity;
    interSeen_ = true;
    lastInterStep_ = step;
  }
  balance_ += static_cast<double>(bits) - frameBits_ * (key ? keyWeight_ : interWeight_);
}

}  // namespace tessel::platform::wmv3
