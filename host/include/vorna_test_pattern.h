// A test-pattern source for export sessions: a media input with an image stream whose
// frames show a moving pattern and, optionally, an audio stream with a tone. Frame n of
// the pattern has at pixel (x, y) red x, green y and blue n (each modulo 256) and is
// opaque; Execute at a time selects the frame of that time. The audio stream's object
// holds the whole tone, 16-bit stereo.
#pragma once

#include "vorna/mediasession_converter.h"

#pragma GCC visibility push(default)

namespace vorna::host {

struct TestPatternOptions {
  Int width = 320;
  Int height = 240;
  Float64 fps = 25.0;
  Float64 duration = 1.0;     // seconds of frames and of sound
  Float64 toneHertz = 440.0;  // 0: no audio stream
  Int sampleRate = 48000;
};

Result<MediaConverter> CreateTestPatternSource(const TestPatternOptions& options);

// The bytes of frame n of the pattern at (x, y), in RGBA order.
inline void TestPatternPixel(Int frame, Int x, Int y, UChar* rgba) {
  rgba[0] = UChar(x);
  rgba[1] = UChar(y);
  rgba[2] = UChar(frame);
  rgba[3] = 255;
}

}  // namespace vorna::host

#pragma GCC visibility pop
