#include "mf_format_maps.h"

#include <mfapi.h>

#include <cstring>

#include "vorna/cpuyield.h"

namespace tessel {

using namespace vorna;

namespace {

constexpr UInt GuidByteHash(UChar b) { return UInt(b ^ (b >> 7) ^ (b >> 4)); }

// Which of the two maps a row of the table goes into.
enum MapRows : UInt32 { SUBTYPE_MAP = 1, PIXEL_FORMAT_MAP = 2, BOTH_MAPS = 3 };

struct FormatRow {
  const GUID* subtype;
  ObjectUseRecord* format;
  UInt32 maps;
};

// In order of insertion: a later row overwrites the value of an existing key, so
// RGB32 ends up as BGRA in the subtype map while both BGRX and BGRA give RGB32 in the
// pixel format map. The H.264 row, which depends on the building session, follows.
const FormatRow FORMAT_ROWS[] = {
    {&MFVideoFormat_RGB32, &g_pixelFormatBGRXu8, PIXEL_FORMAT_MAP},
    {&MFVideoFormat_ARGB32, &g_pixelFormatBGRAu8, BOTH_MAPS},
    {&MFVideoFormat_RGB555, &g_pixelFormatBGRu555, BOTH_MAPS},
    {&MFVideoFormat_RGB565, &g_pixelFormatBGRu565, BOTH_MAPS},
    {&MFVideoFormat_RGB32, &g_pixelFormatBGRAu8, BOTH_MAPS},
    {&MFVideoFormat_RGB24, &g_pixelFormatBGRu8, BOTH_MAPS},
    {&MFVideoFormat_YUY2, &g_pixelFormatYUVi422a, BOTH_MAPS},
    {&MFVideoFormat_YVYU, &g_pixelFormatYUVi422b, BOTH_MAPS},
};

}  // namespace

UInt GuidHashTraits::GetHashCode(const GUID& guid) {
  const UChar* bytes = reinterpret_cast<const UChar*>(&guid);
  UInt hash = GuidByteHash(bytes[0]);
  for (Int i = 1; i < Int(sizeof(GUID)); ++i) hash = hash * 31 + GuidByteHash(bytes[i]);
  return hash;
}

Bool GuidHashTraits::IsEqual(const GUID& a, const GUID& b) { return std::memcmp(&a, &b, sizeof(GUID)) == 0; }

UInt PixelFormatHashTraits::GetHashCode(const PixelFormat& format) { return format ? format.GetHashCode() : 0; }

Bool PixelFormatHashTraits::IsEqual(const PixelFormat& a, const PixelFormat& b) {
  return a.GetPointer() == b.GetPointer() || a.IsEqual(b);
}

MFFormatMaps::SubtypeMap MFFormatMaps::_subtypes{SubtypeMap::DEFAULT_LOAD_FACTOR};
MFFormatMaps::PixelFormatMap MFFormatMaps::_pixelFormats{PixelFormatMap::DEFAULT_LOAD_FACTOR};
std::atomic<Int32> MFFormatMaps::_state{MFFormatMaps::NOT_BUILT};

Result<void> MFFormatMaps::Build(Bool advanced) {
  for (const FormatRow& row : FORMAT_ROWS) {
    PixelFormat format = GetPixelFormat(*row.format);
    if (row.maps & SUBTYPE_MAP) VORNA_RETURN_ON_ERROR(_subtypes.InsertOrAssign(*row.subtype, format));
    if (row.maps & PIXEL_FORMAT_MAP) VORNA_RETURN_ON_ERROR(_pixelFormats.InsertOrAssign(format, *row.subtype));
  }
  // With advanced processing the platform turns H.264 into RGB itself; without it the
  // decoder's own 4:2:2 output is the natural one.
  PixelFormat h264 = GetPixelFormat(advanced ? g_pixelFormatBGRXu8 : g_pixelFormatYUVi422a);
  VORNA_RETURN_ON_ERROR(_subtypes.InsertOrAssign(MFVideoFormat_H264, h264));
  VORNA_RETURN_ON_ERROR(_subtypes.InsertOrAssign(MFVideoFormat_MP4V, GetPixelFormat(g_pixelFormatBGRXu8)));
  return OK;
}

Bool MFFormatMaps::Ensure(Bool advanced) {
  SpinWait wait;
  for (;;) {
    Int32 state = _state.load(std::memory_order_acquire);
    if (state == BUILT) return true;
    if (state == NOT_BUILT && _state.compare_exchange_strong(state, BUILDING, std::memory_order_acquire)) {
      if (!Build(advanced).IsError()) {
        _state.store(BUILT, std::memory_order_release);
        return true;
      }
      // The out-of-memory error is dropped: the lookups fall back, the next use retries.
      _subtypes.Reset();
      _pixelFormats.Reset();
      _state.store(NOT_BUILT, std::memory_order_release);
      return false;
    }
    if (state == BUILDING) wait.Pass();
  }
}

void MFFormatMaps::Free() {
  _subtypes.Reset();
  _pixelFormats.Reset();
  _state.store(NOT_BUILT, std::memory_order_release);
}

PixelFormat SubtypeToPixelFormat(const GUID& subtype, Bool advanced) {
  if (MFFormatMaps::Ensure(advanced)) {
    if (const auto* entry = MFFormatMaps::GetSubtypeMap().Find(subtype)) return entry->GetValue();
  }
  return GetPixelFormat(g_pixelFormatBGRXu8);
}

GUID PixelFormatToSubtype(const PixelFormat& format, Bool advanced) {
  if (MFFormatMaps::Ensure(advanced)) {
    if (const auto* entry = MFFormatMaps::GetPixelFormatMap().Find(format)) return entry->GetValue();
  }
  return MFVideoFormat_RGB32;
}

Result<BaseArray<ReaderCandidate>> MakeVideoCandidates(const PixelFormat& format, Bool advanced) {
  BaseArray<ReaderCandidate> candidates;
  if (!candidates.Append(ReaderCandidate{PixelFormatToSubtype(format, advanced), format}))
    return CreateError(VORNA_SOURCE_LOCATION, 0);
  if (!MFFormatMaps::Ensure(advanced)) return candidates;
  for (const auto& entry : MFFormatMaps::GetPixelFormatMap()) {
    if (!candidates.Append(ReaderCandidate{entry.GetValue(), entry.GetKey()})) return CreateError(VORNA_SOURCE_LOCATION, 0);
  }
  return candidates;
}

void FreeFormatMaps() { MFFormatMaps::Free(); }

}  // namespace tessel
