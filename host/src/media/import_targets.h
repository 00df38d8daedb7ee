// Where the host's import streams put what a converter delivers into them: a frame,
// line by line, or sound, block by block. The sinks of vorna_sinks.h are such targets,
// and so is the export session's bridge. A stream without a target drops deliveries.
#pragma once

#include <memory>

#include "vorna/mediasession_stream.h"

namespace vorna::host {

class ImageImportTarget {
 public:
  virtual ~ImageImportTarget() = default;
  // Before a frame, with the properties that give its pixel format and size.
  virtual Result<void> Init(const MediaStreamPropertiesInterface& properties) = 0;
  // One line of the frame, in the frame's pixel format read with the source's step.
  // Lines come in any order and from several threads at once.
  virtual Result<void> StoreLine(const LineRange& range, const LineSource& source) = 0;
  // After the frame's last line.
  virtual Result<void> Finish(const MediaStreamPropertiesInterface& properties) = 0;
};

class AudioImportTarget {
 public:
  virtual ~AudioImportTarget() = default;
  // One block of sound, in the layout the stream's format tells; blocks come in order.
  virtual Result<void> Store(const AudioDataBlock& block) = 0;
};

// Sets the target of an import stream made by the host's stream classes; false when
// the object is no such stream. The stream holds the target from then on.
Bool SetImageImportTarget(const ObjectInterface& stream, std::shared_ptr<ImageImportTarget> target);
Bool SetAudioImportTarget(const ObjectInterface& stream, std::shared_ptr<AudioImportTarget> target);

}  // namespace vorna::host
