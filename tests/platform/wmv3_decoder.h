// FFmpeg's wmv3 decoder, the oracle of the WMV3 encoder tests: the 4-byte sequence
// header as extradata, each compressed frame as one packet, on one thread, with its
// default (optimised) routines or, bitExact, the reference ones.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "mfreadwrite/ffmpeg_owners.h"

namespace tessel::platform_test {

// One decoded 4:2:0 picture, planes tightly packed.
struct DecodedPicture {
  int width = 0;
  int height = 0;
  bool key = false;
  std::vector<uint8_t> planes[3];
};

class Wmv3Decoder {
 public:
  Wmv3Decoder(const std::array<uint8_t, 4>& sequenceHeader, int width, int height, bool bitExact);
  bool IsOpen() const { return context_ != nullptr; }
  // Decodes one frame; false when the decoder refuses it or shows no picture.
  bool Decode(const std::vector<uint8_t>& frame, bool keyFrame, DecodedPicture* picture);

 private:
  platform::CodecContextPtr context_;
  platform::PacketPtr packet_;
  platform::FramePtr frame_;
};

}  // namespace tessel::platform_test
