// The sound in the export bridge: the input delivers it block by block into an import
// stream, all of it at its first Execute; the bridge then makes the audio object that
// the saver takes whole. The object holds the stretch of the export, from its first
// second to its last, as integer PCM: sound that arrives as 32-bit float (as the
// platform delivers float and 32-bit sound) becomes 16-bit.
#pragma once

#include "media/import_targets.h"
#include "vorna/audioobject.h"
#include "vorna/basearray.h"

namespace vorna::host {

struct SoundLayout {
  Int channelCount = 0;
  Int bitsPerChannel = 0;
  Float64 sampleRate = 0;
};

class BridgeSound : public AudioImportTarget {
 public:
  // from, to: the stretch in seconds of the source; to may be infinite.
  BridgeSound(const SoundLayout& layout, Float64 from, Float64 to) : _layout(layout), _from(from), _to(to) {}

  // The layout an audio object of this sound has.
  static SoundLayout OutputLayout(const SoundLayout& delivered);

  Result<void> Store(const AudioDataBlock& block) override;
  // The audio object of what was delivered; the delivered bytes are given up.
  Result<AudioObject> MakeAudioObject();

 private:
  SoundLayout _layout;
  Float64 _from;
  Float64 _to;
  BaseArray<UChar> _bytes;
};

}  // namespace vorna::host
