#include "frame_grabber.h"

#include "host_text.h"
#include "vorna/mediasession_base.h"
#include "vorna/timevalue.h"

namespace tessel::cli {

namespace {

constexpr const char* SINK_FORMAT = "vorna.PixelFormats.RGBA:u8";

const StreamInfo* FindVideoStream(const std::vector<StreamInfo>& streams, int64_t wanted) {
  int64_t seen = 0;
  for (const StreamInfo& stream : streams)
    if (stream.kind == StreamKind::kVideo && seen++ == wanted) return &stream;
  return nullptr;
}

const FormatInfo* ChooseFormat(const StreamInfo& stream, bool squarePixels) {
  const FormatInfo* square = squarePixels ? FindFormat(stream, -1) : nullptr;
  if (square) return square;
  const FormatInfo* native = FindFormat(stream, 1);
  return native ? native : (stream.formats.empty() ? nullptr : &stream.formats.front());
}

}  // namespace

bool FrameGrabber::Open(MediaFile& file, const FrameRequest& request, Failure& failure) {
  _file = &file;
  std::vector<StreamInfo> streams = DescribeStreams(file.Reading());
  const StreamInfo* stream = FindVideoStream(streams, request.videoStream);
  if (!stream) {
    failure = {kExitFailure, file.Name() + ": has no video stream " + std::to_string(request.videoStream)};
    return false;
  }
  const FormatInfo* format = ChooseFormat(*stream, request.squarePixels);
  if (!format) {
    failure = {kExitFailure, file.Name() + ": video stream " + std::to_string(request.videoStream) + " has no format"};
    return false;
  }
  _format = *format;
  std::string what = file.Name() + ": cannot read video stream " + std::to_string(request.videoStream);
  _sink = vorna::host::AttachImageSink(file.Reading().GetStreams()[stream->index], SINK_FORMAT);
  if (!_sink) {
    failure = {kExitFailure, what};
    return false;
  }
  vorna::Result<void> ready = file.Reading().Subscribe(stream->index, vorna::MakeData(vorna::Int64(format->key)));
  if (!ready.IsError()) ready = file.Reading().PrepareExecute();
  if (ready.IsError()) {
    failure = {kExitFailure, what + ": " + ErrorMessage(ready.GetError())};
    return false;
  }
  return true;
}

bool FrameGrabber::Grab(double seconds, vorna::host::ImageFrame& frame, Failure& failure) {
  int64_t before = _sink->GetFrameCount();
  vorna::Result<void> executed = _file->Reading().Execute(vorna::TimeValue(seconds), vorna::MEDIASESSIONFLAGS_FORCE);
  if (executed.IsError()) {
    failure = _file->ExecuteFailure(executed.GetError(), seconds);
    return false;
  }
  if (_sink->GetFrameCount() == before) {
    failure = {kExitFailure, _file->Name() + ": the reader delivered no frame for " + SecondsText(seconds)};
    return false;
  }
  frame = _sink->GetFrame();
  return true;
}

}  // namespace tessel::cli
