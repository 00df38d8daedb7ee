// The frame in the export bridge: the input delivers it line by line into an import
// stream, and the bridge's export image stream serves it to the saver. The lines are
// kept in the pixel format they arrive in, so that a frame is copied once on its way in
// and converted once, straight into the saver's buffer, on its way out.
//
// The input's Execute writes the frame, the saver's Execute reads it afterwards; the
// session never runs the two at once, and within each the lines of the row loops are
// disjoint. A frame that the input does not deliver again stays as it was.
#pragma once

#include "media/import_targets.h"
#include "media/media_export_stream_classes.h"
#include "vorna/basearray.h"

namespace vorna::host {

class BridgeFrame : public ImageImportTarget, public ExportFrameSource {
 public:
  // aspectRatio: the pixel aspect of the stream, which the frames' properties lack.
  explicit BridgeFrame(Float64 aspectRatio) { _incoming.aspectRatio = aspectRatio; }

  Result<void> Init(const MediaStreamPropertiesInterface& properties) override;
  Result<void> StoreLine(const LineRange& range, const LineSource& source) override;
  Result<void> Finish(const MediaStreamPropertiesInterface& properties) override;

  const ExportFrameShape* GetShape() const override { return _complete ? &_shape : nullptr; }
  LineSource GetPixels(Int x, Int y) const override;

  // Frames finished so far.
  Int GetFrameCount() const { return _frames; }

 private:
  ExportFrameShape _incoming;  // the frame being delivered
  ExportFrameShape _shape;     // the last finished one
  Bool _complete = false;
  Int _frames = 0;
  Int _bitsPerPixel = 0;
  Int _bytesPerLine = 0;
  ConvertPixelFunc _copy = nullptr;  // the frame's format into itself, with any source step
  BaseArray<UChar> _pixels;
};

}  // namespace vorna::host
