// Row conversions between pixel formats.
#pragma once

#include <cstdint>

#include "vorna/pixel/pixelformat.h"

namespace vorna::pixel {

// Converts `count` pixels of one row from the source format into the destination format.
//
// The destination is written contiguously from `dst`, exactly `count` pixels in its format
// and nothing beyond them. The source is walked with any signed step in bits: pixel i is read
// at byte `src + floor(i * srcStepBits / 8)`. The natural step (the source's bits per pixel)
// reads a row forwards, its negative reads it backwards from its last pixel, a whole row pitch
// (times 8) reads a column down or up, and 0 repeats one pixel `count` times.
//
// Formats without alpha give opaque pixels (255) to a destination with alpha; a destination
// without alpha drops it. Padding is written as 255 for an `X` byte and 0 for the top bit of
// `u555`. A format converted to itself is copied byte for byte, padding included.
//
// YUV is BT.601 with limited range (luma 16-235, chroma 16-240), rounded to nearest.
// - As a destination, pixels go in pairs; the pair's chroma is the average of both pixels'.
//   An odd last pixel writes only its luma and the first chroma byte of its pair (2 bytes).
// - As a source, a pixel takes its luma from its own 2-byte slot and its chroma from the pair
//   around that slot. Pairs are counted from `src`, which starts one, on either side of it:
//   the slot at byte offset o (rounded down to even) is the first pixel of a pair when o/2 is
//   even and the second when it is odd. So with a step of -16 bits pixel 1 is the second
//   pixel of the pair just before `src`, and with a row pitch that is a multiple of 4 bytes
//   every pixel of a column walk is the first of its row's pair. The frame formats meet YUV
//   only with its own step; the rest is defined for completeness. Every pair that a pixel is
//   taken from is read whole, so an odd count reads its last pair's 4 bytes.
//
// Source and destination must not overlap. Safe to call from any number of threads.
using ConvertPixelsFunc = void (*)(uint8_t* dst, const uint8_t* src, int64_t count,
                                   int64_t srcStepBits);

// The conversion from `src` to `dst`, or null when there is none. Conversions exist in both
// directions between any two of the formats that frames travel in: `BGRX:u8`, `BGRA:u8`,
// `BGR:u8`, `BGR:u555`, `BGR:u565`, `RGB:u8`, `RGBA:u8`, `RGBX:u8`, `XRGB:u8`, `ARGB:u8`,
// `ABGR:u8`, `YUV:i422a` (Y0 U Y1 V) and `YUV:i422b` (Y0 V Y1 U).
ConvertPixelsFunc GetConvertFunc(const PixelFormat& src, const PixelFormat& dst);

// The same, for callers that carry channel offsets along: null also when either offsets
// differ from `GetChannelOffsets` of their format.
ConvertPixelsFunc GetConvertFunc(const PixelFormat& src, const ChannelOffsets& srcOffsets,
                                 const PixelFormat& dst, const ChannelOffsets& dstOffsets);

}  // namespace vorna::pixel
