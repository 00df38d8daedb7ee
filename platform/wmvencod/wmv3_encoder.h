// The platform's WMV3 encoder (VC-1 Simple and Main profile), the video encoder of the
// sink writer for MFVideoFormat_WMV3 and of the AVI compressor "wmv3". Pictures go in
// as 8-bit 4:2:0; each comes out as one compressed frame (I or P, no B-frames), and
// SequenceHeader() is the 4-byte codec data of the stream. Reconstruction() is what a
// decoder shows for the last frame, bit for bit.
//
// Not thread-safe: one caller at a time. The encoder runs its own threads over
// macroblock rows while Encode works.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "tessel_platform_api.h"
#include "winerror.h"

namespace tessel::platform {

struct Wmv3EncoderSettings {
  int width = 0;  // 16..4096 each, any value between
  int height = 0;
  int rateNum = 30;  // frames per second as a fraction
  int rateDen = 1;
  int64_t bitRate = 8000000;  // bits per second the stream should average
  int keyFrameSpacing = 0;    // pictures from key frame to key frame; 0: five seconds' worth
  bool mainProfile = true;    // Main profile, else Simple profile
  int fixedStep = 0;          // 2..62: every picture at this quantiser step, no rate control
  int threads = 0;            // 0: one per processor
};

// One picture: Y of width x height, U and V of (width+1)/2 x (height+1)/2, top row
// first; the planes are read during Encode only.
struct Wmv3Picture {
  const uint8_t* planes[3] = {};
  ptrdiff_t strides[3] = {};
};

class TESSEL_PLATFORM_API Wmv3Encoder {
 public:
  // E_INVALIDARG for sizes, rates, spacing or step out of range, E_POINTER for a null
  // out pointer, E_OUTOFMEMORY when the pictures cannot be allocated.
  static HRESULT Create(const Wmv3EncoderSettings& settings, std::unique_ptr<Wmv3Encoder>* encoder);
  ~Wmv3Encoder();
  Wmv3Encoder(const Wmv3Encoder&) = delete;
  Wmv3Encoder& operator=(const Wmv3Encoder&) = delete;

  const std::array<uint8_t, 4>& SequenceHeader() const;
  // E_POINTER for a null plane or out pointer; E_OUTOFMEMORY. frame is replaced.
  HRESULT Encode(const Wmv3Picture& picture, std::vector<uint8_t>* frame, bool* keyFrame);
  // Makes the next picture a key frame; the spacing of key frames counts from there.
  void ForceKeyFrame();
  // Valid until the next Encode; the planes have the picture's size.
  Wmv3Picture Reconstruction() const;

 private:
  struct State;
  explicit Wmv3Encoder(std::unique_ptr<State> state);
  std::unique_ptr<State> state_;
};

}  // namespace tessel::platform
