// GetPixelHandlerStruct: what a stream gives when it is asked for pixels. Two delegates
// and a counted reference, in that order: the line fetch, called once per row; the
// give-up call, which, if set, gets the address of the struct when the struct is given
// up; and the reference that keeps the stream's pixel source alive, released right
// after the give-up call.
//
// LINE_FETCH is the signature of the line fetch. The exact row signature belongs to the
// export; until it is fixed, PixelLineFetch is the generic stand-in that code and tests
// use: the row, the first pixel and the pixel count of the run, and the destination.
//
// Owned by the caller that asked for pixels; it must not outlive the stream's pixel
// source unless the reference holds it. Used by one thread at a time.
#pragma once

#include "vorna/baseref.h"
#include "vorna/delegate.h"

namespace vorna {

using PixelLineFetch = Result<void>(Int row, Int firstPixel, Int count, void* destination);

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

}  // namespace vorna
