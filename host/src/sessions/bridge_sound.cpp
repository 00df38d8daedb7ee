#include "vorna/translationunit.h"

#include "sessions/bridge_sound.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "vorna/component.h"

namespace vorna::host {

namespace {

constexpr SourceLocation SOUND_LOCATION{"host/bridgesound", 1, 0};

VORNA_DEFINE_OBJECT_USE(g_audioObjectClass, "vorna.AudioObjectClass");

Bool IsFloat(const SoundLayout& layout) { return layout.bitsPerChannel == 32; }

// The sample frame nearest to seconds, inside 0..count.
Int FrameAt(Float64 seconds, Float64 rate, Int count) {
  Float64 frame = std::floor(seconds * rate + 0.5);
  return frame <= 0 ? 0 : (frame >= Float64(count) ? count : Int(frame));
}

void FloatToInt16(const UChar* source, Int count, UChar* destination) {
  for (Int i = 0; i < count; ++i) {
    Float32 value;
    std::memcpy(&value, source + 4 * i, 4);
    Float32 clamped = std::clamp(value, -1.0f, 1.0f);
    Int16 sample = Int16(std::lround(clamped * 32767.0f));
    std::memcpy(destination + 2 * i, &sample, 2);
  }
}

}  // namespace

SoundLayout BridgeSound::OutputLayout(const SoundLayout& delivered) {
  SoundLayout layout = delivered;
  if (IsFloat(delivered)) layout.bitsPerChannel = 16;
  return layout;
}

Result<void> BridgeSound::Store(const AudioDataBlock& block) {
  if (block.size < 0 || (block.size > 0 && !block.data)) return RaiseError(g_IllegalArgumentErrorObject, SOUND_LOCATION);
  if (!_bytes.Append(block.data, block.size)) return CreateError(SOUND_LOCATION, 0);
  return OK;
}

Result<AudioObject> BridgeSound::MakeAudioObject() {
  SoundLayout output = OutputLayout(_layout);
  Int frameBytes = _layout.channelCount * _layout.bitsPerChannel / 8;
  if (frameBytes <= 0 || !(_layout.sampleRate > 0)) return RaiseError(g_IllegalArgumentErrorObject, SOUND_LOCATION);
  Int count = _bytes.GetCount() / frameBytes;
  Int first = FrameAt(_from, _layout.sampleRate, count);
  Int end = std::max(first, FrameAt(_to, _layout.sampleRate, count));
  VORNA_ASSIGN_OR_RETURN(AudioObject audio, CreateObjectOf<AudioObjectInterface>(g_audioObjectClass, SOUND_LOCATION));
  VORNA_RETURN_ON_ERROR(audio.Init(output.channelCount, output.bitsPerChannel, output.sampleRate, end - first));
  const UChar* source = _bytes.GetData() + first * frameBytes;
  UChar* destination = audio.GetDataPtr().data;
  if (IsFloat(_layout)) {
    FloatToInt16(source, (end - first) * _layout.channelCount, destination);
  } else if (end > first) {
    std::memcpy(destination, source, size_t((end - first) * frameBytes));
  }
  _bytes.Reset();
  return audio;
}

}  // namespace vorna::host
