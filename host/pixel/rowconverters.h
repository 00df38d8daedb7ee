// The row loops behind every conversion, one per kind of source and destination.
#pragma once

#include <cstdint>
#include <cstring>
#include <type_traits>

#include "bt601.h"
#include "sourcewalk.h"
#include "wordshuffle.h"

namespace vorna::pixel {

// Pixel i of the source: an Rgba8 for the RGB family, a Yuv8 for YUV.
template <class Src, class Walk>
auto ReadPixel(const uint8_t* src, const Walk& walk, int64_t i) {
  if constexpr (Src::kYuv) {
    return Src::ReadAt(src, walk.Offset(i));
  } else {
    return Src::Read(src + walk.Offset(i));
  }
}

template <class Format>
void CopyRow(uint8_t* __restrict dst, const uint8_t* __restrict src, int64_t count) {
  std::memcpy(dst, src, static_cast<size_t>(count) * Format::kBytes);
}

template <class Format, class Walk>
void CopyPixels(uint8_t* __restrict dst, const uint8_t* __restrict src, int64_t count,
                Walk walk) {
  for (int64_t i = 0; i < count; ++i) {
    std::memcpy(dst + i * Format::kBytes, src + walk.Offset(i), Format::kBytes);
  }
}

template <class Src, class Dst, class Walk>
void ToRgbRow(uint8_t* __restrict dst, const uint8_t* __restrict src, int64_t count,
              Walk walk) {
  for (int64_t i = 0; i < count; ++i) {
    Dst::Write(dst + i * Dst::kBytes, bt601::Decode(ReadPixel<Src>(src, walk, i)));
  }
}

// A YUV row read forwards: each pair's chroma is worked out once for both of its pixels.
template <class Src, class Dst>
void YuvPairsToRgbRow(uint8_t* __restrict dst, const uint8_t* __restrict src, int64_t count) {
  int64_t i = 0;
  for (; i + 1 < count; i += 2) {
    const uint8_t* pair = src + i * 2;
    const bt601::ChromaTerms terms = bt601::TermsOf(pair[Src::kUIndex], pair[Src::kVIndex]);
    Dst::Write(dst + i * Dst::kBytes, bt601::Decode(pair[0], terms));
    Dst::Write(dst + (i + 1) * Dst::kBytes, bt601::Decode(pair[2], terms));
  }
  if (i < count) Dst::Write(dst + i * Dst::kBytes, bt601::Decode(Src::ReadAt(src, i * 2)));
}

template <class Src, class Dst, class Walk>
void ToYuvRow(uint8_t* __restrict dst, const uint8_t* __restrict src, int64_t count,
              Walk walk) {
  int64_t i = 0;
  for (; i + 1 < count; i += 2) {
    Dst::WritePair(dst + i * 2, bt601::EncodePair(ReadPixel<Src>(src, walk, i),
                                                  ReadPixel<Src>(src, walk, i + 1)));
  }
  if (i < count) Dst::WriteSingle(dst + i * 2, bt601::Encode(ReadPixel<Src>(src, walk, i)));
}

template <class Src, class Dst, class Walk>
void ConvertWith(uint8_t* dst, const uint8_t* src, int64_t count, Walk walk) {
  constexpr bool kForward = std::is_same_v<Walk, ForwardWalk<Src::kBytes>>;
  constexpr bool kSame = std::is_same_v<Src, Dst>;
  if constexpr (kSame && kForward) {
    CopyRow<Src>(dst, src, count);
  } else if constexpr (kSame && !Src::kYuv) {
    CopyPixels<Src>(dst, src, count, walk);
  } else if constexpr (Dst::kYuv) {
    ToYuvRow<Src, Dst>(dst, src, count, walk);
  } else if constexpr (kForward && Src::kYuv) {
    YuvPairsToRgbRow<Src, Dst>(dst, src, count);
  } else if constexpr (kForward && Src::kBytes == 4 && Dst::kBytes == 4) {
    ShuffleWords<Src, Dst>(dst, src, count);
  } else {
    ToRgbRow<Src, Dst>(dst, src, count, walk);
  }
}

// The entry point of every conversion: picks the tight loop for a row read forwards.
template <class Src, class Dst>
void ConvertRow(uint8_t* dst, const uint8_t* src, int64_t count, int64_t srcStepBits) {
  if (count <= 0) return;
  if (srcStepBits == Src::kBytes * 8) {
    ConvertWith<Src, Dst>(dst, src, count, ForwardWalk<Src::kBytes>{});
  } else {
    ConvertWith<Src, Dst>(dst, src, count, SteppedWalk{srcStepBits});
  }
}

}  // namespace vorna::pixel
