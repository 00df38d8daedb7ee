// ColorProfile: a counted reference to a host colour profile (vorna.ColorProfileInterface#1,
// a non-virtual interface whose first method releases a profile). The published ones
// are vorna.ColorProfiles:none, srgb, sgrey, cmyk, yuv, linear_rgb and linear_grey.
#pragma once

#include "vorna/cowblockref.h"
#include "vorna/id.h"
#include "vorna/objectuse.h"
#include "vorna/staticinterface.h"

namespace vorna {

class ColorProfileInterface {
 public:
  static constexpr const Char* ID = "vorna.ColorProfileInterface#1";
  static constexpr Int COUNT = 18;
  using Reserved = void (*)();
  struct Table {
    void (*Free)(void* block);
    void* (*Alloc)(const SourceLocation& location);
    void* (*Clone)(const void* block, const SourceLocation& location);
    const Id* (*GetName)(const void* block);
    Reserved reserved[14];
  };
  static constexpr UChar RETURN_CLASSES[COUNT] = {1, 2, 2, 2};
  static Table _table;
  static StaticInterfaceRecord _record;
};

class ColorProfile : public COWBlockRef<ColorProfileInterface> {
 public:
  // The profile's member name, such as "srgb"; empty for a null profile.
  Id GetName() const {
    const Id* name = _block ? ColorProfileInterface::_table.GetName(_block) : nullptr;
    return name ? *name : Id();
  }
  // One more reference to a profile block.
  static ColorProfile FromBlock(const void* block) {
    ColorProfile profile;
    if (block) {
      RefCounter::AddReference(block);
      profile._block = const_cast<void*>(block);
    }
    return profile;
  }
};

extern ObjectUseRecord g_srgbColorProfile;

// A published colour profile; a null profile while it is not available.
ColorProfile GetColorProfile(ObjectUseRecord& record);

class Data;

// The profile a Data holds (a colour profile reference, as frame properties carry it);
// a null profile for an empty Data or one of another type.
ColorProfile ColorProfileFromData(const Data& data);

VORNA_DECLARED_STATIC_INTERFACE(ColorProfileConvertInterface, "vorna.ColorProfileConvertInterface#1", 5);

}  // namespace vorna
