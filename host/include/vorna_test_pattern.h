// A test-pattern source: a media input that behaves like a file's loader, with an image
// stream whose frames show a moving pattern and, optionally, an audio stream with a
// tone. Frame n of the pattern has at pixel (x, y) red x, green y and blue n (each
// modulo 256) and is opaque; it is delivered in RGBA:u8 for times from n / fps on, and
// past the duration Execute gives the end of the stream. The sound, stereo, 16-bit or
// 32-bit float, is delivered whole at the first Execute that finds its stream
// subscribed.
#pragma once

#include <string>

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
  Bool floatSound = false;    // the tone as 32-bit float (sample / 32768) instead of 16-bit
  // The member of vorna.ColorProfiles that the frames' values are in.
  std::string colorProfile = "srgb";
  Float64 pixelAspect = 1.0;  // the pixel aspect ratio the image format tells
};

Result<MediaConverter> CreateTestPatternSource(const TestPatternOptions& options);

// The bytes of frame n of the pattern at (x, y), in RGBA order.
inline void TestPatternPixel(Int frame, Int x, Int y, UChar* rgba) {
  rgba[0] = UChar(x);
  rgba[1] = UChar(y);
  rgba[2] = UChar(frame);
  rgba[3] = 255;
}

// The tone's sample i as a 16-bit value, the same on both channels.
Int16 TestPatternTone(const TestPatternOptions& options, Int i);

}  // namespace vorna::host

#pragma GCC visibility pop
