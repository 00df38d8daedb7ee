// vorna.AudioObjectClass: sound held whole, interleaved, with its layout.
#include "vorna/translationunit.h"

#include <cstring>

#include "vorna/audioobject.h"
#include "vorna/component.h"

namespace vorna::host {

namespace {

constexpr SourceLocation AUDIO_LOCATION{"host/audioobject", 1, 0};

class AudioObjectComponent : public Component<AudioObjectComponent> {
 public:
  static ClassRecord _classRecord;

  Result<void> Init(Int channelCount, Int bitsPerChannel, Float64 sampleRate, Int sampleCount) {
    if (channelCount <= 0 || bitsPerChannel <= 0 || bitsPerChannel % 8 || sampleRate <= 0 || sampleCount < 0)
      return RaiseError(g_IllegalArgumentErrorObject, AUDIO_LOCATION);
    Int frameBytes = channelCount * bitsPerChannel / 8;
    if (sampleCount > MAXVALUE_INT / frameBytes) return CreateError(AUDIO_LOCATION, 0);
    _bytes.Reset();
    if (!_bytes.SetCount(sampleCount * frameBytes)) return CreateError(AUDIO_LOCATION, 0);
    _channelCount = channelCount;
    _bitsPerChannel = bitsPerChannel;
    _sampleRate = sampleRate;
    _sampleCount = sampleCount;
    return OK;
  }
  Int GetChannelCount() const { return _channelCount; }
  Int GetBitsPerChannel() const { return _bitsPerChannel; }
  Float64 GetSampleRate() const { return _sampleRate; }
  Int GetSampleCount() const { return _sampleCount; }
  TimeValue GetLength() const { return TimeValue(_sampleRate > 0 ? Float64(_sampleCount) / _sampleRate : 0.0); }
  Block<UChar> GetDataPtr() const {
    return {const_cast<UChar*>(_bytes.GetData()), _bytes.GetCount()};
  }

  Result<void> CopyFrom(const AudioObjectComponent& source) {
    if (!_bytes.Append(source._bytes.GetData(), source._bytes.GetCount())) return CreateError(AUDIO_LOCATION, 0);
    _channelCount = source._channelCount;
    _bitsPerChannel = source._bitsPerChannel;
    _sampleRate = source._sampleRate;
    _sampleCount = source._sampleCount;
    return OK;
  }

 private:
  BaseArray<UChar> _bytes;
  Int _channelCount = 0;
  Int _bitsPerChannel = 0;
  Float64 _sampleRate = 0;
  Int _sampleCount = 0;
};

}  // namespace

VORNA_COMPONENT_CLASS(AudioObjectComponent, g_audioObjectClass, "vorna.AudioObjectClass", "",
                      &g_DataDictionaryObjectClass, &AudioObjectInterface::_record,
                      VORNA_OVERRIDE(AudioObjectInterface, Init), VORNA_OVERRIDE(AudioObjectInterface, GetChannelCount),
                      VORNA_OVERRIDE(AudioObjectInterface, GetBitsPerChannel),
                      VORNA_OVERRIDE(AudioObjectInterface, GetSampleRate),
                      VORNA_OVERRIDE(AudioObjectInterface, GetSampleCount),
                      VORNA_OVERRIDE(AudioObjectInterface, GetLength), VORNA_OVERRIDE(AudioObjectInterface, GetDataPtr));

}  // namespace vorna::host
