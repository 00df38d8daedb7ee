// Pixel formats: published host objects with vorna.PixelFormatInterface#1, named by
// their group's registry and a member, such as vorna.PixelFormats.BGRX:u8. A format
// knows its size, channels and default colour profile and gives the function that
// converts a row of pixels of another format into it; the source row is read with any
// signed pixel step in bits, which is how rotated frames are read column by column.
#pragma once

#include "vorna/baseref.h"
#include "vorna/colorprofile.h"
#include "vorna/objectuse.h"

namespace vorna {

inline constexpr Int MAX_PIXEL_CHANNELS = 5;

// Bit offset of each channel within a pixel, in memory order.
struct ChannelOffsets {
  Int32 bits[MAX_PIXEL_CHANNELS] = {};
  Int32 count = 0;
};

// Converts count pixels from source, read with a step of sourceStepBits per pixel, to
// destination, written contiguously.
using ConvertPixelFunc = void (*)(UChar* destination, const UChar* source, Int count, Int sourceStepBits);

class PixelFormatInterface : public ObjectInterface {
 public:
  static constexpr const Char* ID = "vorna.PixelFormatInterface#1";
  static constexpr Int COUNT = 20;
  static constexpr UInt32 REFCLASS = refclass::COPY_ON_WRITE;
  enum : Int {
    kInit, kGetChannels, kGetPixelFormatGroup, kCreatePix, kGetChannelCount, kGetChannelOffsets, kGetBitsPerPixel,
    kGetBytesPerLine, kGetPackedPixelCount, kHasAlpha, kGetAlphaPixelFormat, kGetColorSpace, kGetDefaultColorProfile,
    kGetConvertPixelFunc, kConvertPixelFromSlow, kIsIdenticalPixel, kPixToString, kGetConvertPixelFromFunc,
    kGetConvertPixelToFunc, kGetShortName
  };
  static InterfaceRecord _record;
  using ObjectInterface::ObjectInterface;

  // A zeroed block from System of height lines of GetBytesPerLine(width, alignment)
  // bytes; the caller frees it with System::Free.
  Result<UChar*> CreatePix(Int width, Int height, Int alignment) const {
    return Invoke<&PixelFormatInterface::CreatePix, kCreatePix>(width, height, alignment);
  }
  Int GetChannelCount() const { return Invoke<&PixelFormatInterface::GetChannelCount, kGetChannelCount>(); }
  ChannelOffsets GetChannelOffsets() const {
    return Invoke<&PixelFormatInterface::GetChannelOffsets, kGetChannelOffsets>();
  }
  Int GetBitsPerPixel() const { return Invoke<&PixelFormatInterface::GetBitsPerPixel, kGetBitsPerPixel>(); }
  Int GetBytesPerLine(Int width, Int alignment) const {
    return Invoke<&PixelFormatInterface::GetBytesPerLine, kGetBytesPerLine>(width, alignment);
  }
  Int GetPackedPixelCount() const {
    return Invoke<&PixelFormatInterface::GetPackedPixelCount, kGetPackedPixelCount>();
  }
  Bool HasAlpha() const { return Invoke<&PixelFormatInterface::HasAlpha, kHasAlpha>(); }
  ColorProfile GetDefaultColorProfile() const {
    return Invoke<&PixelFormatInterface::GetDefaultColorProfile, kGetDefaultColorProfile>();
  }
  // The conversion of rows of source into this format; null when none exists. The
  // offsets are those the two formats gave; profiles may be null.
  Result<ConvertPixelFunc> GetConvertPixelFunc(const PixelFormatInterface& source, const ChannelOffsets& sourceOffsets,
                                               const ChannelOffsets& targetOffsets, const ColorProfile* sourceProfile,
                                               const ColorProfile* targetProfile) const {
    return Invoke<&PixelFormatInterface::GetConvertPixelFunc, kGetConvertPixelFunc>(
        source, sourceOffsets, targetOffsets, sourceProfile, targetProfile);
  }
  // The full id, such as vorna.PixelFormats.BGR:u8.
  Id GetShortName() const { return Invoke<&PixelFormatInterface::GetShortName, kGetShortName>(); }
};

using PixelFormat = COWRef<PixelFormatInterface>;

// The formats the media code reads by name.
extern ObjectUseRecord g_pixelFormatBGRu8;
extern ObjectUseRecord g_pixelFormatBGRu555;
extern ObjectUseRecord g_pixelFormatBGRu565;
extern ObjectUseRecord g_pixelFormatBGRAu8;
extern ObjectUseRecord g_pixelFormatBGRXu8;
extern ObjectUseRecord g_pixelFormatRGBu8;
extern ObjectUseRecord g_pixelFormatRGBAu8;
extern ObjectUseRecord g_pixelFormatYUVi422a;
extern ObjectUseRecord g_pixelFormatYUVi422b;

// A published pixel format, or a null reference while it is not available.
PixelFormat GetPixelFormat(ObjectUseRecord& record);

VORNA_DECLARED_INTERFACE(PixelFormatGroupInterface, ObjectInterface, "vorna.PixelFormatGroupInterface#1", refclass::READ_ONLY,
                         kGetExtensions);

VORNA_DECLARED_INTERFACE(PixelFormatDynamicInterface, PixelFormatInterface, "vorna.PixelFormatDynamicInterface#1", refclass::COPY_ON_WRITE,
                         kAddChannel);

VORNA_DECLARED_INTERFACE(PixelFormatIndexedColorInterface, PixelFormatInterface, "vorna.PixelFormatIndexedColorInterface#1", refclass::COPY_ON_WRITE,
                         kInitColorTable, kGetColorTablePixelFormat, kGetColorTableSize, kSetIndex, kGetIndex);

VORNA_DECLARED_STATIC_INTERFACE(PixelFormatsInterface, "vorna.PixelFormatsInterface#1", 1);

extern ObjectUseRecord g_PixelFormatBaseClass;

}  // namespace vorna
