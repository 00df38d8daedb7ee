// Four-byte pixels to four-byte pixels as whole 32-bit words: shifts and masks that the
// compiler turns into vector code, for the conversions every frame goes through.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>

namespace vorna::pixel {

static_assert(std::endian::native == std::endian::little,
              "byte indices within a pixel are taken as little-endian word positions");

// Byte `From` of a word moved to byte `To`, the other bytes cleared.
template <int From, int To>
constexpr uint32_t MoveByte(uint32_t word) {
  constexpr uint32_t kMask = 0xffu << (8 * To);
  if constexpr (To >= From) {
    return (word << (8 * (To - From))) & kMask;
  } else {
    return (word >> (8 * (From - To))) & kMask;
  }
}

// A pixel of `Src` as a pixel of `Dst`, both `BytePixel`s of four bytes.
template <class Src, class Dst>
constexpr uint32_t ShuffleWord(uint32_t word) {
  uint32_t out = MoveByte<Src::kR, Dst::kR>(word) | MoveByte<Src::kG, Dst::kG>(word) |
                 MoveByte<Src::kB, Dst::kB>(word);
  if constexpr (Dst::kA >= 0 && Src::kA >= 0) {
    out |= MoveByte<Src::kA, Dst::kA>(word);
  } else if constexpr (Dst::kA >= 0) {
    out |= 0xffu << (8 * Dst::kA);
  }
  if constexpr (Dst::kX >= 0) out |= 0xffu << (8 * Dst::kX);
  return out;
}

template <class Src, class Dst>
void ShuffleWords(uint8_t* __restrict dst, const uint8_t* __restrict src, int64_t count) {
  // Blocks of a fixed count: the loop over a block is what gets vectorised.
  constexpr int64_t kBlock = 16;
  const auto one = [&](int64_t i) {
    uint32_t word;
    std::memcpy(&word, src + i * 4, 4);
    word = ShuffleWord<Src, Dst>(word);
    std::memcpy(dst + i * 4, &word, 4);
  };
  int64_t i = 0;
  for (; i + kBlock <= count; i += kBlock) {
    for (int64_t k = 0; k < kBlock; ++k) one(i + k);
  }
  for (; i < count; ++i) one(i);
}

}  // namespace vorna::pixel
