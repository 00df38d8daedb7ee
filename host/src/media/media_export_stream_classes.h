// What feeds the host's export streams: a frame source for the image stream, and the
// audio object of the audio stream.
#pragma once

#include <memory>

#include "vorna/audioobject.h"
#include "vorna/mediasession_stream.h"

namespace vorna::host {

// The shape of a frame: size, pixel aspect, the pixel format its rows are kept in, and
// the colour profile of their values (null: the format's default).
struct ExportFrameShape {
  Int width = 0;
  Int height = 0;
  Float64 aspectRatio = 1.0;
  PixelFormat pixelFormat;
  ColorProfile colorProfile;
};

// The frame an export image stream serves. Its owner changes it only between frames;
// while a frame is served it is read from any number of threads at once.
class ExportFrameSource {
 public:
  virtual ~ExportFrameSource() = default;
  // Null while there is no frame.
  virtual const ExportFrameShape* GetShape() const = 0;
  // Where pixel x of row y lies, and the step to the next pixel; the caller keeps x and
  // y inside the shape.
  virtual LineSource GetPixels(Int x, Int y) const = 0;
};

// vorna.MediaStreamImageDataExportClass over source: InitStream gives the properties
// of the current frame, GetPixelStream its rows in any format and profile asked for.
Result<MediaStream> CreateImageExportStream(std::shared_ptr<const ExportFrameSource> source);
// vorna.MediaStreamAudioDataExportClass, without sound until SetExportAudio gives it.
Result<MediaStream> CreateAudioExportStream();
// The sound the audio export stream's GetAudioObject gives from now on.
Result<void> SetExportAudio(const ObjectInterface& stream, const AudioObject& audio);

}  // namespace vorna::host
