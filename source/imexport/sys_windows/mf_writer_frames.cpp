// One frame into the sink writer. The rows are fetched from the host straight into the
// platform's buffer, in the pixel format the writer's input type names, by a parallel
// loop whose jobs each write their own rows; what alignment adds to the right of a row
// is filled with black.
#include "windows_mf_movie_writer.h"

#include <mfapi.h>

#include <cstdint>

#include "vorna/parallelfordynamic.h"
#include "vorna/win_com.h"

namespace tessel {

using namespace vorna;
using Microsoft::WRL::ComPtr;

namespace {

// Where the rows of one frame go, for the jobs of the loop; read only while it runs.
struct FrameRows {
  UChar* data = nullptr;
  Int rowBytes = 0;
  Int bitsPerPixel = 0;
  Int bytesPerPixel = 0;
  Int evenWidth = 0;
  ConvertPixelFunc fill = nullptr;
};

// The black that fills a row's end: one RGB pixel of zeros, read with a step of 0.
constexpr UChar BLACK[6] = {};

Result<void> FetchRows(const WindowsMFMovieWriter& writer, const FrameRows& rows, const PixelFormat& format,
                       const GetPixelsDelegate& getPixels) {
  using Handler = GetPixelHandlerStruct<>;
  auto init = [&](ParallelFor::DynamicLoopRange<Handler>& range) -> Result<void> {
    VORNA_ASSIGN_OR_RETURN(range.localData, getPixels(format));
    return OK;
  };
  auto body = [&](Int y, Handler& handler) -> Result<void> {
    const Int pictureRow = writer._flipRows ? writer._height - 1 - y : y;
    UChar* row = rows.data + y * rows.rowBytes;
    VORNA_RETURN_ON_ERROR(handler.getLine(LineRange{0, pictureRow, rows.evenWidth}, LineDestination{row, rows.bitsPerPixel}, 0));
    if (rows.evenWidth < writer._alignedWidth)
      rows.fill(row + rows.bytesPerPixel * rows.evenWidth, BLACK, writer._alignedWidth - rows.evenWidth, 0);
    return OK;
  };
  auto finalise = [](Handler& handler) { handler.GiveUpNow(); };
  return ParallelFor::Dynamic<Handler>(Int(0), writer._height, init, body, finalise, 0, 16, JOBQUEUE_DEFAULT);
}

Result<ConvertPixelFunc> BlackFill(const PixelFormat& target) {
  const PixelFormat black = GetPixelFormat(g_pixelFormatRGBu8);
  VORNA_ASSIGN_OR_RETURN(ConvertPixelFunc fill, target.GetConvertPixelFunc(black, black.GetChannelOffsets(),
                                                                           target.GetChannelOffsets(), nullptr, nullptr));
  if (!fill) return RaiseError(g_UnsupportedArgumentErrorObject, VORNA_SOURCE_LOCATION);
  return fill;
}

Result<void> FetchFrame(const WindowsMFMovieWriter& writer, FrameRows& rows, const PixelFormat& target,
                        const GetPixelsDelegate& getPixels) {
  VORNA_ASSIGN_OR_RETURN(rows.fill, BlackFill(target));
  return FetchRows(writer, rows, target, getPixels);
}

// Fills the locked buffer; the lock is given back on every path.
Result<void> FillFrame(const WindowsMFMovieWriter& writer, IMFMediaBuffer* buffer, FrameRows& rows,
                       const PixelFormat& target, const GetPixelsDelegate& getPixels) {
  BYTE* data = nullptr;
  VORNA_RETURN_ON_ERROR(CheckHResult(buffer->Lock(&data, nullptr, nullptr)));
  rows.data = data;
  Result<void> filled = FetchFrame(writer, rows, target, getPixels);
  buffer->Unlock();
  return filled;
}

}  // namespace

Result<void> WindowsMFMovieWriter::WriteFrame(const TimeValue& time, const TimeValue& duration,
                                              const GetPixelsDelegate& getPixels) {
  const PixelFormat target = GetPixelFormat(_yuvInput ? g_pixelFormatYUVi422a : g_pixelFormatBGRXu8);
  FrameRows rows;
  rows.bitsPerPixel = target.GetBitsPerPixel();
  rows.bytesPerPixel = (rows.bitsPerPixel + 7) / 8;
  rows.rowBytes = rows.bytesPerPixel * _alignedWidth;
  rows.evenWidth = _width & ~Int(1);
  const Int64 size = Int64(rows.rowBytes) * _alignedHeight;
  if (size > Int64(UINT32_MAX)) return RaiseError(g_IllegalArgumentErrorObject, VORNA_SOURCE_LOCATION);
  ComPtr<IMFMediaBuffer> buffer;
  VORNA_RETURN_ON_ERROR(CheckHResult(MFCreateMemoryBuffer(DWORD(size), &buffer)));
  VORNA_RETURN_ON_ERROR(FillFrame(*this, buffer.Get(), rows, target, getPixels));
  VORNA_RETURN_ON_ERROR(CheckHResult(buffer->SetCurrentLength(DWORD(size))));
  ComPtr<IMFSample> sample;
  VORNA_RETURN_ON_ERROR(CheckHResult(MFCreateSample(&sample)));
  VORNA_RETURN_ON_ERROR(CheckHResult(sample->AddBuffer(buffer.Get())));
  VORNA_RETURN_ON_ERROR(CheckHResult(sample->SetSampleTime(ToTicks(time))));
  VORNA_RETURN_ON_ERROR(CheckHResult(sample->SetSampleDuration(ToTicks(duration))));
  return CheckHResult(_sinkWriter->WriteSample(_videoStream, sample.Get()));
}

}  // namespace tessel
