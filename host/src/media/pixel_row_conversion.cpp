#include "media/pixel_row_conversion.h"

#include <string_view>

#include "vorna/errorbase.h"

namespace vorna::host {

namespace {

constexpr SourceLocation CONVERSION_LOCATION{"host/pixelrowconversion", 1, 0};

pixel::Transfer TransferOf(const ColorProfile& profile) {
  Id name = profile.GetName();
  for (size_t i = 0; i < pixel::kColorProfileNames.size(); ++i)
    if (std::string_view(name.GetCString(), size_t(name.GetLength())) == pixel::kColorProfileNames[i])
      return pixel::TransferOf(pixel::ColorProfile(i));
  return pixel::Transfer::None;
}

Result<ConvertPixelFunc> Find(const PixelFormatInterface& source, const PixelFormatInterface& target,
                              const ChannelOffsets& targetOffsets) {
  VORNA_ASSIGN_OR_RETURN(ConvertPixelFunc convert,
                         target.GetConvertPixelFunc(source, source.GetChannelOffsets(), targetOffsets, nullptr, nullptr));
  if (!convert) return RaiseError(g_UnsupportedArgumentErrorObject, CONVERSION_LOCATION);
  return convert;
}

}  // namespace

Result<PixelRowConversion> PixelRowConversion::Make(const PixelFormat& source, const ColorProfile& sourceProfile,
                                                    const PixelFormatInterface& target,
                                                    const ChannelOffsets& targetOffsets,
                                                    const ColorProfile& targetProfile) {
  PixelRowConversion conversion;
  conversion._table = pixel::FindTransferTable(TransferOf(sourceProfile), TransferOf(targetProfile));
  if (!conversion._table) {
    VORNA_ASSIGN_OR_RETURN(conversion._direct, Find(source, target, targetOffsets));
    return conversion;
  }
  PixelFormat rgba = GetPixelFormat(g_pixelFormatRGBAu8);
  VORNA_ASSIGN_OR_RETURN(conversion._toRgba, Find(source, rgba, rgba.GetChannelOffsets()));
  VORNA_ASSIGN_OR_RETURN(conversion._fromRgba, Find(rgba, target, targetOffsets));
  return conversion;
}

void PixelRowConversion::Convert(UChar* destination, const UChar* source, Int count, Int sourceStepBits,
                                 std::vector<UChar>& scratch) const {
  if (_direct) return _direct(destination, source, count, sourceStepBits);
  scratch.resize(size_t(count) * 4);
  _toRgba(scratch.data(), source, count, sourceStepBits);
  pixel::ApplyTransfer(scratch.data(), count, *_table);
  _fromRgba(destination, scratch.data(), count, 32);
}

}  // namespace vorna::host
