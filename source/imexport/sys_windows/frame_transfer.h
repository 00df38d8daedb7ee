// The transfer of one decoded frame from its platform buffer into the host's image.
// No pixel is touched here: for each output line the host's handler gets the address of
// its first pixel and the signed distance between pixels, read straight from the locked
// buffer. Rotation is nothing but those two numbers: a turned frame is read column by
// column, with a pixel step as large as a whole source row. The lines go out in a
// parallel loop whose jobs each take one handler from the stream.
#pragma once

#include <mfobjects.h>

#include "vorna/gfx_image_pixelformats.h"
#include "vorna/mediasession_stream.h"

namespace tessel {

// Holds the lock on a frame's buffer for the time of a transfer, through IMF2DBuffer
// when the buffer offers it. Keeps the buffer alive although its sample may go.
class MediaBufferLock {
 public:
  explicit MediaBufferLock(IMFMediaBuffer* buffer);
  MediaBufferLock(const MediaBufferLock&) = delete;
  MediaBufferLock& operator=(const MediaBufferLock&) = delete;
  ~MediaBufferLock();

  // scanLine0: the top line of the picture; stride: the signed distance in bytes to the
  // line below it. A 2D buffer gives both itself; a plain buffer takes defaultStride
  // (negative: bottom-up) and the number of rows it holds, and is refused with an
  // illegal-state error when it is too small for them.
  vorna::Result<void> Lock(vorna::Int defaultStride, vorna::Int height, vorna::UChar*& scanLine0,
                           vorna::Int& stride);
  // Undoes an open lock; a failure is not looked at.
  void Unlock();

 private:
  IMFMediaBuffer* _buffer = nullptr;
  IMF2DBuffer* _buffer2D = nullptr;
  vorna::Bool _locked = false;
};

// What the transfer needs to know of a movie stream.
struct FrameLayout {
  // The delivered size, after rotation.
  vorna::Int width = 0;
  vorna::Int height = 0;
  // Degrees, 0, 90, 180 or 270; any other value delivers no line.
  vorna::Int rotation = 0;
  // Row pitch of the negotiated output type, negative for bottom-up rows.
  vorna::Int defaultStride = 0;
  // The reader converts with advanced video processing; without it the rows of a plain
  // buffer lie 32-byte aligned.
  vorna::Bool advancedProcessing = false;
};

// Delivers the lines of buffer, in pixelFormat, into stream and finishes the stream's
// frame, between the stream's InitStream with properties (done by the caller) and the
// buffer's unlock. FinishStream is called on every path: on success while the buffer is
// still locked, and its error is the result; on failure after the unlock, with its
// result ignored, and the failure is the result.
vorna::Result<void> TransferFrame(IMFMediaBuffer* buffer, const FrameLayout& layout,
                                  const vorna::PixelFormatInterface& pixelFormat,
                                  const vorna::MediaStreamImageDataImportInterface& stream,
                                  const vorna::MediaStreamPropertiesInterface& properties);

}  // namespace tessel
