// Outputs of the media session: converters that end a chain, such as the savers that
// write a movie to a url.
#pragma once

#include "vorna/delegate.h"
#include "vorna/mediasession_converter.h"
#include "vorna/url.h"

namespace vorna {

VORNA_DECLARED_INTERFACE(MediaOutputInterface, MediaConverterInterface, "vorna.MediaOutputInterface#1", refclass::STRONG,
                         kResetConverter, kSetSelectionHandler, kGetSelectionHandler, kCallSelectionHandler);
VORNA_DECLARED_INTERFACE(MediaOutputTextureInterface, MediaOutputInterface, "vorna.MediaOutputTextureInterface#1", refclass::STRONG,
                         kSetOutputTexture);

// Gives the window that owns a system dialog (null for none), or why there is none.
using GetWindowDelegate = Delegate<Result<void*>()>;

// A width and a height.
struct BitmapSize {
  Int width = 0;
  Int height = 0;
};

class MediaOutputUrlInterface : public MediaOutputInterface {
 public:
  static constexpr const Char* ID = "vorna.MediaOutputUrlInterface#1";
  static constexpr Int COUNT = 5;
  static constexpr UInt32 REFCLASS = refclass::STRONG;
  enum : Int { kGetOutputUrl, kSetOutputUrl, kGetFileFormat, kEditSystemOptions, kCheckBitmapSize };
  static InterfaceRecord _record;
  using MediaOutputInterface::MediaOutputInterface;

  Url GetOutputUrl() const { return Invoke<&MediaOutputUrlInterface::GetOutputUrl, kGetOutputUrl>(); }
  Result<void> SetOutputUrl(const Url& url) const {
    return Invoke<&MediaOutputUrlInterface::SetOutputUrl, kSetOutputUrl>(url);
  }
  // The published file format the output writes.
  ObjectRef GetFileFormat() const { return Invoke<&MediaOutputUrlInterface::GetFileFormat, kGetFileFormat>(); }
  // Lets the user edit the system's own options into settings in a dialog owned by the
  // window getWindow gives; false when cancelled.
  Result<Bool> EditSystemOptions(DataDictionary& settings, const GetWindowDelegate& getWindow) const {
    return Invoke<&MediaOutputUrlInterface::EditSystemOptions, kEditSystemOptions>(settings, getWindow);
  }
  // The size the output will write for a wanted size.
  Result<BitmapSize> CheckBitmapSize(const BitmapSize& wanted) const {
    return Invoke<&MediaOutputUrlInterface::CheckBitmapSize, kCheckBitmapSize>(wanted);
  }
};

extern ObjectUseRecord g_MediaOutputBaseClass;
extern ObjectUseRecord g_MediaOutputTextureClass;
extern ObjectUseRecord g_MediaOutputUrlBaseClass;

}  // namespace vorna
