#include "wmvencod/wmv3_encoder.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <thread>
#include <utility>

#include "wmvencod/frame_planes.h"
#include "wmvencod/picture_encoder.h"
#include "wmvencod/picture_syntax.h"
#include "wmvencod/rate_control.h"
#include "wmvencod/row_pool.h"

namespace tessel::platform {

using namespace wmv3;

namespace {

constexpr int kMinSize = 16;
constexpr int kMaxSize = 4096;
constexpr double kDefaultKeySeconds = 5;
// A key picture whose size misses its budget by more than this factor, or a P picture
// that takes more than kInterRetryFactor times it, is coded again at a corrected step.
constexpr double kKeyRetryFactor = 1.4;
constexpr double kInterRetryFactor = 2.0;

bool ValidSettings(const Wmv3EncoderSettings& s) {
  return s.width >= kMinSize && s.width <= kMaxSize && s.height >= kMinSize && s.height <= kMaxSize && s.rateNum > 0 &&
         s.rateDen > 0 && s.keyFrameSpacing >= 0 && s.threads >= 0 &&
         (s.fixedStep == 0 ? s.bitRate > 0 : (s.fixedStep >= 2 && s.fixedStep <= 62));
}

int KeySpacing(const Wmv3EncoderSettings& s) {
  if (s.keyFrameSpacing > 0) return s.keyFrameSpacing;
  return std::max(1, static_cast<int>(std::lround(kDefaultKeySeconds * s.rateNum / s.rateDen)));
}

int ThreadCount(const Wmv3EncoderSettings& s) {
  if (s.threads > 0) return s.threads;
  return static_cast<int>(std::max(1u, std::thread::hardware_concurrency()));
}

}  // namespace

struct Wmv3Encoder::State {
  explicit State(const Wmv3EncoderSettings& s)
      : settings(s),
        macroblocksWide((s.width + 15) / 16),
        macroblocksHigh((s.height + 15) / 16),
        keySpacing(KeySpacing(s)),
        pool(ThreadCount(s)),
        pictures(macroblocksWide, macroblocksHigh, pool),
        rate(s.bitRate, s.rateNum, s.rateDen, keySpacing, static_cast<int64_t>(s.width) * s.height) {
    source.Allocate(macroblocksWide, macroblocksHigh);
    reference.Allocate(macroblocksWide, macroblocksHigh);
    reconstruction.Allocate(macroblocksWide, macroblocksHigh);
    header = wmv3::SequenceHeader({s.mainProfile, static_cast<double>(s.rateNum) / s.rateDen, s.bitRate});
  }

  int StepFor(bool key, double targetBits) const {
    return settings.fixedStep ? settings.fixedStep : rate.StepFor(key, targetBits);
  }

  std::vector<uint8_t> Code(bool key, int step) {
    PictureChoices choices;
    choices.key = key;
    choices.frameCount = static_cast<int>(frameIndex & 3);
    choices.quantizer = Quantizer::FromStep(step);
    return pictures.Encode(source, key ? nullptr : &reference, key ? true : !roundingControl, choices, reconstruction);
  }

  Wmv3EncoderSettings settings;
  int macroblocksWide;
  int macroblocksHigh;
  int keySpacing;
  RowPool pool;
  PictureEncoder pictures;
  RateControl rate;
  FramePlanes source;
  FramePlanes reference;       // the last reconstruction, edges extended
  FramePlanes reconstruction;  // the picture being coded
  std::array<uint8_t, 4> header{};
  int64_t frameIndex = 0;
  int64_t nextKey = 0;  // the index of the next key frame
  bool roundingControl = true;  // RND of the last picture
};

Wmv3Encoder::Wmv3Encoder(std::unique_ptr<State> state) : state_(std::move(state)) {}
Wmv3Encoder::~Wmv3Encoder() = default;

HRESULT Wmv3Encoder::Create(const Wmv3EncoderSettings& settings, std::unique_ptr<Wmv3Encoder>* encoder) {
  if (!encoder) return E_POINTER;
  encoder->reset();
  if (!ValidSettings(settings)) return E_INVALIDARG;
  try {
    encoder->reset(new Wmv3Encoder(std::make_unique<State>(settings)));
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  }
  return S_OK;
}

const std::array<uint8_t, 4>& Wmv3Encoder::SequenceHeader() const { return state_->header; }

HRESULT Wmv3Encoder::Encode(const Wmv3Picture& picture, std::vector<uint8_t>* frame, bool* keyFrame) {
  if (!frame || !keyFrame || !picture.planes[0] || !picture.planes[1] || !picture.planes[2]) return E_POINTER;
  State& s = *state_;
  try {
    int chromaWidth = (s.settings.width + 1) / 2, chromaHeight = (s.settings.height + 1) / 2;
    s.source.planes[0].Load(picture.planes[0], picture.strides[0], s.settings.width, s.settings.height);
    s.source.planes[1].Load(picture.planes[1], picture.strides[1], chromaWidth, chromaHeight);
    s.source.planes[2].Load(picture.planes[2], picture.strides[2], chromaWidth, chromaHeight);

    bool key = s.frameIndex >= s.nextKey;
    double target = s.rate.TargetBits(key);
    int step = s.StepFor(key, target);
    std::vector<uint8_t> bits = s.Code(key, step);
    double ratio = static_cast<double>(bits.size()) * 8 / target;
    bool missed = key ? (ratio > kKeyRetryFactor || ratio < 1 / kKeyRetryFactor) : ratio > kInterRetryFactor;
    if (!s.settings.fixedStep && missed) {
      step = std::clamp(static_cast<int>(std::lround(step * ratio)), 2, 62);
      bits = s.Code(key, step);
    }
    s.rate.Update(key, step, static_cast<int64_t>(bits.size()) * 8);
    s.roundingControl = key ? true : !s.roundingControl;
    if (key) s.nextKey = s.frameIndex + s.keySpacing;
    std::swap(s.reference, s.reconstruction);
    s.reference.ExtendEdges();
    ++s.frameIndex;
    *frame = std::move(bits);
    *keyFrame = key;
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  }
  return S_OK;
}

void Wmv3Encoder::ForceKeyFrame() { state_->nextKey = state_->frameIndex; }

Wmv3Picture Wmv3Encoder::Reconstruction() const {
  Wmv3Picture picture;
  for (int plane = 0; plane < 3; ++plane) {
    const Plane& p = state_->reference.planes[plane];
    picture.planes[plane] = p.At(0, 0);
    picture.strides[plane] = p.Stride();
  }
  return picture;
}

}  // namespace tessel::platform
