#include "sample_ring.h"

#include "vorna/errorbase.h"
#include "vorna/system.h"

namespace tessel {

using namespace vorna;

namespace {
constexpr Int RING_SIZE = 2;
}

SampleRing::~SampleRing() { Clear(); }

Int SampleRing::GetCount() const { return _count; }

SampleEntry& SampleRing::At(Int i) { return _entries[(_head + i) % RING_SIZE]; }

SampleEntry& SampleRing::Oldest() { return At(0); }

SampleEntry& SampleRing::Newest() { return At(_count - 1); }

Result<void> SampleRing::Push(Int time, Int duration, IMFSample* sample) {
  if (_count == RING_SIZE) {
    SampleEntry& oldest = _entries[_head];
    if (oldest.sample) oldest.sample->Release();
    oldest = SampleEntry{time, duration, sample};
    _head = (_head + 1) % RING_SIZE;
    return OK;
  }
  if (_count == _capacity) {
    void* grown = System::Realloc(_entries, RING_SIZE * Int(sizeof(SampleEntry)), VORNA_SOURCE_LOCATION);
    if (!grown) {
      if (sample) sample->Release();
      return CreateError(VORNA_SOURCE_LOCATION, 0);
    }
    _entries = static_cast<SampleEntry*>(grown);
    _capacity = RING_SIZE;
  }
  _entries[(_head + _count) % RING_SIZE] = SampleEntry{time, duration, sample};
  ++_count;
  return OK;
}

void SampleRing::Clear() {
  for (Int i = 0; i < _count; ++i)
    if (SampleEntry& entry = At(i); entry.sample) entry.sample->Release();
  System::Free(_entries);
  _entries = nullptr;
  _count = _capacity = _head = 0;
}

}  // namespace tessel
