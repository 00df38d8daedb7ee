// The last two decoded samples of a movie stream, oldest first. A frame without a
// duration can only be delimited once its successor is read, so the frame to show may
// be the one before the newest.
#pragma once

#include <mfobjects.h>

#include "vorna/apibase.h"
#include "vorna/resultbase.h"

namespace tessel {

struct SampleEntry {
  vorna::Int time = 0;       // ticks of 100 ns, as ReadSample gave it
  vorna::Int duration = 0;   // ticks; 0 while not known
  IMFSample* sample = nullptr;  // owned, may be null (a stream tick)
};

// At most two entries in a growable array; at two a new entry replaces the oldest in
// place and the head moves on. Pointers into the ring stay valid until the next Push
// or Clear.
class SampleRing {
 public:
  SampleRing() = default;
  SampleRing(const SampleRing&) = delete;
  SampleRing& operator=(const SampleRing&) = delete;
  ~SampleRing();

  vorna::Int GetCount() const;
  // Entry i counted from the oldest; i below GetCount().
  SampleEntry& At(vorna::Int i);
  SampleEntry& Oldest();
  SampleEntry& Newest();
  // Takes over the sample's reference; the out-of-memory error when the array can't grow.
  vorna::Result<void> Push(vorna::Int time, vorna::Int duration, IMFSample* sample);
  // Releases every sample and frees the array.
  void Clear();

 private:
  SampleEntry* _entries = nullptr;
  vorna::Int _count = 0;
  vorna::Int _capacity = 0;
  vorna::Int _head = 0;
};

}  // namespace tessel
