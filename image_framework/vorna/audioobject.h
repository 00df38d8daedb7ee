// Sound held whole: channels, bits per channel, rate, sample count, length and the
// interleaved bytes.
#pragma once

#include "vorna/basearray.h"
#include "vorna/datadictionaryobject.h"
#include "vorna/timevalue.h"

namespace vorna {

class AudioObjectInterface : public DataDictionaryObjectInterface {
 public:
  static constexpr const Char* ID = "vorna.AudioObjectInterface#1";
  static constexpr Int COUNT = 7;
  static constexpr UInt32 REFCLASS = refclass::STRONG;
  enum : Int { kInit, kGetChannelCount, kGetBitsPerChannel, kGetSampleRate, kGetSampleCount, kGetLength, kGetDataPtr };
  static InterfaceRecord _record;
  using DataDictionaryObjectInterface::DataDictionaryObjectInterface;

  // Makes room for sampleCount samples of the given layout, zeroed.
  Result<void> Init(Int channelCount, Int bitsPerChannel, Float64 sampleRate, Int sampleCount) const {
    return Invoke<&AudioObjectInterface::Init, kInit>(channelCount, bitsPerChannel, sampleRate, sampleCount);
  }
  Int GetChannelCount() const { return Invoke<&AudioObjectInterface::GetChannelCount, kGetChannelCount>(); }
  Int GetBitsPerChannel() const { return Invoke<&AudioObjectInterface::GetBitsPerChannel, kGetBitsPerChannel>(); }
  Float64 GetSampleRate() const { return Invoke<&AudioObjectInterface::GetSampleRate, kGetSampleRate>(); }
  Int GetSampleCount() const { return Invoke<&AudioObjectInterface::GetSampleCount, kGetSampleCount>(); }
  TimeValue GetLength() const { return Invoke<&AudioObjectInterface::GetLength, kGetLength>(); }
  // The samples' bytes, channels interleaved.
  Block<UChar> GetDataPtr() const { return Invoke<&AudioObjectInterface::GetDataPtr, kGetDataPtr>(); }
};
using AudioObject = StrongRef<AudioObjectInterface>;

extern ObjectUseRecord g_AudioObjectClass;

}  // namespace vorna
