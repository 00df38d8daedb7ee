// The handlers that move pixel rows between a stream and the code that reads or
// writes a picture.
//
// GetPixelHandlerStruct: what an export stream gives when it is asked for pixels. Two
// delegates and a counted reference, in that order: the line fetch, called once per
// row with the run of pixels wanted, where they go and a flags value; the give-up call,
// which, if set, gets the address of the struct when the struct is given up; and the
// reference that keeps the stream's pixel source alive, released right after the
// give-up call.
//
// SetPixelHandlerStruct: what an import stream gives to take pixels. The set delegate
// takes one line with where its pixels are and how far apart they lie (a signed step
// in bits, as large as a whole source row for a rotated frame); the free delegate is
// called with the struct when it is given up; region is the part of the image that the
// user of the struct has written, inclusive, empty while left is above right.
//
// Owned by the caller that asked for pixels; it must not outlive the stream's pixel
// source unless the reference holds it. Used by one thread at a time.
#pragma once

#include <algorithm>

#include "vorna/baseref.h"
#include "vorna/delegate.h"

namespace vorna {

// A run of pixels of one line: the first pixel, the line and the number of pixels.
struct LineRange {
  Int x = 0;
  Int y = 0;
  Int count = 0;
};

// Where a fetched line goes: its first byte and the size of a pixel in bits.
struct LineDestination {
  UChar* pixels = nullptr;
  Int bitsPerPixel = 0;
};

// Where a line to be stored is: its first pixel and the distance from one pixel to the
// next in bits, signed.
struct LineSource {
  const UChar* pixels = nullptr;
  Int pixelStep = 0;
};

using PixelLineFetch = Result<void>(const LineRange& region, const LineDestination& destination, Int flags);
using PixelLineStore = Result<void>(const LineRange& range, const LineSource& source, Int flags);

template <typename LINE_FETCH = PixelLineFetch>
struct GetPixelHandlerStruct {
  using GiveUp = Delegate<void(GetPixelHandlerStruct* handler)>;

  GetPixelHandlerStruct() = default;
  GetPixelHandlerStruct(const GetPixelHandlerStruct&) = delete;
  GetPixelHandlerStruct& operator=(const GetPixelHandlerStruct&) = delete;
  GetPixelHandlerStruct(GetPixelHandlerStruct&&) noexcept = default;
  GetPixelHandlerStruct& operator=(GetPixelHandlerStruct&& other) noexcept {
    if (this != &other) {
      GiveUpNow();
      getLine = std::move(other.getLine);
      giveUp = std::move(other.giveUp);
      reference = std::move(other.reference);
    }
    return *this;
  }
  ~GetPixelHandlerStruct() { GiveUpNow(); }

  // Calls the give-up delegate once and releases the reference; the struct is empty
  // afterwards.
  void GiveUpNow() {
    GiveUp call = std::move(giveUp);
    call(this);
    getLine.Reset();
    reference.Reset();
  }

  Delegate<LINE_FETCH> getLine;
  GiveUp giveUp;
  ObjectRef reference;
};

struct SetPixelHandlerStruct {
  SetPixelHandlerStruct() = default;
  SetPixelHandlerStruct(const SetPixelHandlerStruct&) = delete;
  SetPixelHandlerStruct& operator=(const SetPixelHandlerStruct&) = delete;
  SetPixelHandlerStruct(SetPixelHandlerStruct&&) noexcept = default;
  SetPixelHandlerStruct& operator=(SetPixelHandlerStruct&&) noexcept = default;

  // Calls the free delegate once; the struct keeps its region.
  void FreeNow() {
    Delegate<void(SetPixelHandlerStruct*)> call = std::move(freeHandler);
    call(this);
    setLine.Reset();
  }

  // Widens the region by one written line.
  void AddToRegion(Int left, Int line, Int right) {
    region[0] = std::min(region[0], left);
    region[1] = std::min(region[1], line);
    region[2] = std::max(region[2], right);
    region[3] = std::max(region[3], line);
  }
  Bool IsRegionEmpty() const { return region[0] > region[2]; }

  Delegate<PixelLineStore> setLine;
  Delegate<void(SetPixelHandlerStruct*)> freeHandler;
  Int region[4] = {MAXVALUE_INT, MAXVALUE_INT, MINVALUE_INT, MINVALUE_INT};
};

}  // namespace vorna
