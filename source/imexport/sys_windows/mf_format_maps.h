// The conversion between the platform's video subtypes and the host's pixel formats:
// two process-wide maps, built once on first use and read without a lock afterwards,
// and the list of output types that a video stream is offered in turn.
#pragma once

#include <guiddef.h>

#include <atomic>

#include "vorna/basearray.h"
#include "vorna/gfx_image_pixelformats.h"
#include "vorna/hashmap.h"

namespace tessel {

// GUID keys: h = f(b0), then h * 31 + f(b) over the other fifteen bytes in memory
// order, with f(b) = b ^ (b >> 7) ^ (b >> 4); equal when all 16 bytes are.
struct GuidHashTraits {
  static vorna::UInt GetHashCode(const GUID& guid);
  static vorna::Bool IsEqual(const GUID& a, const GUID& b);
};

// Pixel format keys: the object's hash code (0 for a null reference); equal when the
// references are identical or the objects say so.
struct PixelFormatHashTraits {
  static vorna::UInt GetHashCode(const vorna::PixelFormat& format);
  static vorna::Bool IsEqual(const vorna::PixelFormat& a, const vorna::PixelFormat& b);
};

// One output type to offer a video stream.
struct ReaderCandidate {
  GUID subtype;
  vorna::PixelFormat format;
};

class MFFormatMaps {
 public:
  using SubtypeMap = vorna::HashMap<GUID, vorna::PixelFormat, GuidHashTraits>;
  using PixelFormatMap = vorna::HashMap<vorna::PixelFormat, GUID, PixelFormatHashTraits>;

  // Builds the maps if no one has yet; advanced decides the value of the H.264 row and
  // is read only by the call that builds. False while the maps can't be built (no
  // memory); the next call tries again. Threads that find the maps being built wait.
  static vorna::Bool Ensure(vorna::Bool advanced);

  // Valid after Ensure gave true, until Free.
  static const SubtypeMap& GetSubtypeMap() { return _subtypes; }
  static const PixelFormatMap& GetPixelFormatMap() { return _pixelFormats; }

  // Frees both maps with the references they hold and lets the next use build again.
  static void Free();

 private:
  enum : vorna::Int32 { NOT_BUILT = 0, BUILDING = 1, BUILT = 2 };

  static vorna::Result<void> Build(vorna::Bool advanced);

  static SubtypeMap _subtypes;
  static PixelFormatMap _pixelFormats;
  static std::atomic<vorna::Int32> _state;
};

// The pixel format of a subtype; BGRX at 8 bits for a subtype the map doesn't know.
vorna::PixelFormat SubtypeToPixelFormat(const GUID& subtype, vorna::Bool advanced);

// The subtype of a pixel format; MFVideoFormat_RGB32 for a format the map doesn't know.
GUID PixelFormatToSubtype(const vorna::PixelFormat& format, vorna::Bool advanced);

// The output types for a stream whose preferred format is format: that format with its
// subtype first, then every pair of the pixel format map in the map's order (so the
// first pair stands in the list twice). An out-of-memory error if the list can't grow.
vorna::Result<vorna::BaseArray<ReaderCandidate>> MakeVideoCandidates(const vorna::PixelFormat& format,
                                                                     vorna::Bool advanced);

// The free function of the import's first initialisation stage.
void FreeFormatMaps();

}  // namespace tessel
