// What feeds the host's export streams: a source of frame lines for the image stream,
// and the audio object of the audio stream.
#pragma once

#include <memory>

#include "vorna/audioobject.h"
#include "vorna/mediasession_stream.h"

namespace vorna::host {

// Gives frame lines in RGBA:u8; the stream converts them to the format asked for. May
// be asked from several threads at once.
class ImageLineSource {
 public:
  virtual ~ImageLineSource() = default;
  virtual Int GetWidth() const = 0;
  virtual Int GetHeight() const = 0;
  // Writes count RGBA pixels of line y, from pixel x on.
  virtual void GetLine(Int x, Int y, Int count, UChar* rgba) const = 0;
};

Result<MediaStream> CreateImageExportStream(std::shared_ptr<const ImageLineSource> source);
Result<MediaStream> CreateAudioExportStream(const AudioObject& audio);

}  // namespace vorna::host
