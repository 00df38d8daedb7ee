#include "sessions/bridge_frame.h"

#include "media/color_profiles.h"
#include "vorna/errorbase.h"
#include "vorna/mediasession_keys.h"
#include "vorna/referencedata.h"

namespace vorna::host {

namespace {

constexpr SourceLocation FRAME_LOCATION{"host/bridgeframe", 1, 0};
// The largest side the bridge keeps, and the largest number of pixels.
constexpr Int MAX_SIDE = 1 << 16;
constexpr Int MAX_PIXELS = Int(1) << 28;

ErrorResult BadFrame(const Char* what) {
  String message = String::FromLiteral(what);
  return RaiseError(g_IllegalArgumentErrorObject, FRAME_LOCATION, &message);
}

}  // namespace

Result<void> BridgeFrame::Init(const MediaStreamPropertiesInterface& properties) {
  VORNA_ASSIGN_OR_RETURN(Data format, properties.GetData(g_mediaFormatImagePixelformat));
  PixelFormat pixelFormat(GetObjectFromData<PixelFormatInterface>(&format));
  VORNA_ASSIGN_OR_RETURN(Int64 width, properties.Get<Int64>(g_mediaFormatImageWidth));
  VORNA_ASSIGN_OR_RETURN(Int64 height, properties.Get<Int64>(g_mediaFormatImageHeight));
  if (!pixelFormat) return BadFrame("The frame has no pixel format.");
  if (width < 0 || height < 0 || width > MAX_SIDE || height > MAX_SIDE || width * height > MAX_PIXELS)
    return BadFrame("The frame's size is out of range.");
  VORNA_ASSIGN_OR_RETURN(_copy, pixelFormat.GetConvertPixelFunc(pixelFormat, pixelFormat.GetChannelOffsets(),
                                                                pixelFormat.GetChannelOffsets(), nullptr, nullptr));
  if (!_copy) return RaiseError(g_UnsupportedArgumentErrorObject, FRAME_LOCATION);
  Result<Data> profile = properties.GetData(g_mediaFormatImageColorprofile);
  _incoming.colorProfile = profile.IsError() ? ColorProfile() : ColorProfileFromData(profile.GetValue());
  _incoming.width = width;
  _incoming.height = height;
  _incoming.pixelFormat = pixelFormat;
  _bitsPerPixel = pixelFormat.GetBitsPerPixel();
  _bytesPerLine = pixelFormat.GetBytesPerLine(width, 1);
  _complete = false;
  if (!_pixels.SetCount(_bytesPerLine * height)) return CreateError(FRAME_LOCATION, 0);
  return OK;
}

Result<void> BridgeFrame::StoreLine(const LineRange& range, const LineSource& source) {
  if (_complete || range.y < 0 || range.y >= _incoming.height || range.x < 0 || range.count < 0 ||
      range.count > _incoming.width - range.x || (range.count > 0 && !source.pixels))
    return RaiseError(g_IllegalArgumentErrorObject, FRAME_LOCATION);
  _copy(_pixels.GetData() + range.y * _bytesPerLine + range.x * _bitsPerPixel / 8, source.pixels, range.count,
        source.pixelStep);
  return OK;
}

Result<void> BridgeFrame::Finish(const MediaStreamPropertiesInterface&) {
  if (!_incoming.pixelFormat) return RaiseError(g_IllegalStateErrorObject, FRAME_LOCATION);
  _shape = _incoming;
  _complete = true;
  ++_frames;
  return OK;
}

LineSource BridgeFrame::GetPixels(Int x, Int y) const {
  return {_pixels.GetData() + y * _bytesPerLine + x * _bitsPerPixel / 8, _bitsPerPixel};
}

}  // namespace vorna::host
