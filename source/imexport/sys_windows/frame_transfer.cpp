#include "frame_transfer.h"

#include <algorithm>

#include "vorna/parallelfordynamic.h"
#include "vorna/win_com.h"

namespace tessel {

using namespace vorna;

MediaBufferLock::MediaBufferLock(IMFMediaBuffer* buffer) : _buffer(buffer) {
  _buffer->AddRef();
  void* buffer2D = nullptr;
  if (SUCCEEDED(_buffer->QueryInterface(IID_IMF2DBuffer, &buffer2D))) _buffer2D = static_cast<IMF2DBuffer*>(buffer2D);
}

MediaBufferLock::~MediaBufferLock() {
  Unlock();
  if (_buffer2D) _buffer2D->Release();
  _buffer->Release();
}

Result<void> MediaBufferLock::Lock(Int defaultStride, Int height, UChar*& scanLine0, Int& stride) {
  _locked = false;
  if (_buffer2D) {
    BYTE* top = nullptr;
    LONG pitch = 0;
    VORNA_RETURN_ON_ERROR(CheckHResult(_buffer2D->Lock2D(&top, &pitch)));
    scanLine0 = top;
    stride = Int(pitch);
    _locked = true;
    return OK;
  }
  BYTE* data = nullptr;
  DWORD currentLength = 0;
  VORNA_RETURN_ON_ERROR(CheckHResult(_buffer->Lock(&data, nullptr, &currentLength)));
  const Int rowBytes = defaultStride < 0 ? -defaultStride : defaultStride;
  if (height * rowBytes > Int(currentLength)) {
    _buffer->Unlock();
    return RaiseError(g_IllegalStateErrorObject, VORNA_SOURCE_LOCATION);
  }
  stride = defaultStride;
  // A picture without rows has no bottom line; its top is the start of the buffer.
  scanLine0 = defaultStride < 0 && height > 0 ? data + (height - 1) * rowBytes : data;
  _locked = true;
  return OK;
}

void MediaBufferLock::Unlock() {
  if (!_locked) return;
  if (_buffer2D)
    _buffer2D->Unlock2D();
  else
    _buffer->Unlock();
  _locked = false;
}

namespace {

// Where the lines of a locked frame are, as the walks read them.
struct LockedFrame {
  const UChar* scanLine0 = nullptr;
  Int stride = 0;
  Int bits = 0;
  Int bytes = 0;
  Int width = 0;
  Int height = 0;
};

// Rows in a plain buffer. The delivered size is the size after rotation, so the buffer
// of a frame turned by a quarter holds as many rows as the delivered frame is wide; the
// bottom-up start and the size check are made with that number, which keeps every walk
// inside the buffer.
Int SourceRows(const FrameLayout& layout) {
  return layout.rotation == 90 || layout.rotation == 270 ? layout.width : layout.height;
}

// The pitch of a plain buffer: without advanced processing the platform's rows of a
// top-down frame are padded to 32 bytes, which the type's default stride doesn't say.
Int LockStride(const FrameLayout& layout) {
  if (!layout.advancedProcessing && layout.defaultStride > 0) return (layout.defaultStride + 31) & ~Int(31);
  return layout.defaultStride;
}

void ClearRegion(SetPixelHandlerStruct& handler) {
  const SetPixelHandlerStruct empty;
  std::copy(std::begin(empty.region), std::end(empty.region), std::begin(handler.region));
}

// One parallel loop over the output lines; walk(y, range, source) places line index y.
// Each job takes its own handler from the stream.
template <typename WALK>
Result<void> DeliverLines(const LockedFrame& frame, const WALK& walk, const ChannelOffsets& channelOffsets,
                          const MediaStreamImageDataImportInterface& stream,
                          const MediaStreamPropertiesInterface& properties) {
  auto init = [&](ParallelFor::DynamicLoopRange<SetPixelHandlerStruct>& range) -> Result<void> {
    VORNA_ASSIGN_OR_RETURN(range.localData, stream.SetPixelStream(properties, channelOffsets, 0));
    ClearRegion(range.localData);
    return OK;
  };
  auto body = [&](Int y, SetPixelHandlerStruct& handler) -> Result<void> {
    LineRange range{0, y, frame.width};
    LineSource source;
    walk(y, range, source);
    if (frame.width >= 1) handler.AddToRegion(0, range.y, frame.width - 1);
    return handler.setLine(range, source, 0);
  };
  auto finalise = [](SetPixelHandlerStruct& handler) { handler.FreeNow(); };
  return ParallelFor::Dynamic<SetPixelHandlerStruct>(Int(0), frame.height, init, body, finalise, 0, 16,
                                                     JOBQUEUE_DEFAULT);
}

// The four walks. Output line y of a frame turned by 90 degrees is source column y read
// from the bottom row upwards; by 270 degrees source column H - 1 - y read downwards; by
// 180 degrees source row y read backwards, written to line H - 1 - y.
Result<void> DeliverRotated(const LockedFrame& f, Int rotation, const ChannelOffsets& channelOffsets,
                            const MediaStreamImageDataImportInterface& stream,
                            const MediaStreamPropertiesInterface& properties) {
  switch (rotation) {
    case 0:
      return DeliverLines(f, [&f](Int y, LineRange&, LineSource& source) {
        source = {f.scanLine0 + y * f.stride, f.bits};
      }, channelOffsets, stream, properties);
    case 90:
      return DeliverLines(f, [&f](Int y, LineRange&, LineSource& source) {
        source = {f.scanLine0 + (f.width - 1) * f.stride + y * f.bytes, -8 * f.stride};
      }, channelOffsets, stream, properties);
    case 180:
      return DeliverLines(f, [&f](Int y, LineRange& range, LineSource& source) {
        range.y = f.height - 1 - y;
        source = {f.scanLine0 + y * f.stride + (f.width - 1) * f.bytes, -f.bits};
      }, channelOffsets, stream, properties);
    case 270:
      return DeliverLines(f, [&f](Int y, LineRange&, LineSource& source) {
        source = {f.scanLine0 + (f.height - 1 - y) * f.bytes, 8 * f.stride};
      }, channelOffsets, stream, properties);
    default:
      return OK;
  }
}

}  // namespace

Result<void> TransferFrame(IMFMediaBuffer* buffer, const FrameLayout& layout, const PixelFormatInterface& pixelFormat,
                           const MediaStreamImageDataImportInterface& stream,
                           const MediaStreamPropertiesInterface& properties) {
  Result<void> failure = OK;
  {
    MediaBufferLock lock(buffer);
    UChar* scanLine0 = nullptr;
    Int stride = 0;
    failure = lock.Lock(LockStride(layout), SourceRows(layout), scanLine0, stride);
    if (!failure.IsError()) {
      const Int bits = pixelFormat.GetBitsPerPixel();
      const LockedFrame frame{scanLine0, stride, bits, (bits + 7) / 8, layout.width, layout.height};
      failure = DeliverRotated(frame, layout.rotation, pixelFormat.GetChannelOffsets(), stream, properties);
    }
    if (!failure.IsError()) {
      // The image is finished while the buffer can't change under it.
      Result<void> finished = stream.FinishStream(properties);
      lock.Unlock();
      return finished;
    }
    lock.Unlock();
  }
  (void)stream.FinishStream(properties);
  return failure;
}

}  // namespace tessel
