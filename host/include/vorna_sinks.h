// Sinks of the host's session driver: where the frames and the sound of an import
// stream land. An image sink keeps the last frame in a pixel format of the caller's
// choosing; lines may arrive in any order and from any thread. An audio sink collects
// the bytes of every block. Tools and tests use them; modules never see them.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "vorna/objectbase.h"

#pragma GCC visibility push(default)

namespace vorna::host {

struct ImageFrame {
  int64_t width = 0;
  int64_t height = 0;
  int64_t bytesPerLine = 0;
  std::string pixelFormat;        // the format the frame is kept in
  std::vector<uint8_t> pixels;    // top line first
  int64_t deliveredLines = 0;     // lines stored into this frame
  // What the properties of the frame said at its end, when they had it:
  // vorna.mediaproperties.video.sampletime and .sampleduration in seconds, .skippedframes.
  std::optional<double> sampleTime;
  std::optional<double> sampleDuration;
  std::optional<int64_t> skippedFrames;
};

class ImageSink {
 public:
  virtual ~ImageSink() = default;
  // The last finished frame, and how many frames were finished. VisitFrame shows the
  // frame in place, without a copy; the sink waits with the next frame until it returns.
  virtual ImageFrame GetFrame() const = 0;
  virtual void VisitFrame(const std::function<void(const ImageFrame&)>& visit) const = 0;
  virtual int64_t GetFrameCount() const = 0;
};

class AudioSink {
 public:
  virtual ~AudioSink() = default;
  virtual std::vector<uint8_t> GetBytes() const = 0;
  virtual int64_t GetBlockCount() const = 0;
};

// Attaches a sink to an import stream made by the host's stream classes; the sink
// lives as long as the stream holds it and the caller's pointer. Null when the object
// is no such stream or the format id is unknown.
std::shared_ptr<ImageSink> AttachImageSink(const ObjectInterface& stream, const std::string& pixelFormat);
std::shared_ptr<AudioSink> AttachAudioSink(const ObjectInterface& stream);

}  // namespace vorna::host

#pragma GCC visibility pop
