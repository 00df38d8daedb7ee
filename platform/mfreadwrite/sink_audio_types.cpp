// Reading the audio types of the sink writer. The rates are those that MPEG-4 AAC and
// MPEG-1/2 layer 3 define (ISO/IEC 14496-3 sampling frequency index, ISO/IEC 11172-3 and
// 13818-3).
#include "mfreadwrite/sink_audio_types.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <iterator>
#include <span>

#include "mfapi.h"
#include "mferror.h"
#include "mmreg.h"

namespace tessel::platform {

namespace {

constexpr int kAacRates[] = {96000, 88200, 64000, 48000, 44100, 32000, 24000, 22050, 16000, 12000, 11025, 8000};
constexpr int kMp3Rates[] = {48000, 44100, 32000, 24000, 22050, 16000, 12000, 11025, 8000};
constexpr int kMaxInputChannels = 8;
constexpr int kMaxInputRate = 768000;
// MF_MT_AAC_AUDIO_PROFILE_LEVEL_INDICATION values that AAC LC streams carry: AAC
// profile levels 1 to 4, High Quality Audio profile levels 1 to 4, and "not specified".
constexpr UINT32 kAacLowComplexityLevels[] = {0x28, 0x29, 0x2A, 0x2B, 0x50, 0x51, 0x52, 0x53, 0xFE};
constexpr UINT32 kRawAacPayload = 0;

bool Contains(std::span<const int> values, int value) {
  return std::find(values.begin(), values.end(), value) != values.end();
}

bool AcceptsAacSettings(IMFMediaType* type) {
  UINT32 level = MFGetAttributeUINT32(type, MF_MT_AAC_AUDIO_PROFILE_LEVEL_INDICATION, 0xFE);
  UINT32 payload = MFGetAttributeUINT32(type, MF_MT_AAC_PAYLOAD_TYPE, kRawAacPayload);
  return payload == kRawAacPayload &&
         std::find(std::begin(kAacLowComplexityLevels), std::end(kAacLowComplexityLevels), level) !=
             std::end(kAacLowComplexityLevels);
}

// MF_MT_USER_DATA of MP3 is the part of MPEGLAYER3WAVEFORMAT behind its WAVEFORMATEX.
bool AcceptsMp3Settings(IMFMediaType* type) {
  constexpr UINT32 kTailBytes = sizeof(MPEGLAYER3WAVEFORMAT) - sizeof(WAVEFORMATEX);
  UINT32 size = 0;
  if (FAILED(type->GetBlobSize(MF_MT_USER_DATA, &size))) return true;
  UINT8 tail[kTailBytes] = {};
  if (size != kTailBytes || FAILED(type->GetBlob(MF_MT_USER_DATA, tail, kTailBytes, nullptr))) return false;
  WORD id = 0;
  std::memcpy(&id, tail, sizeof(id));  // wID leads the tail
  return id == MPEGLAYER3_ID_MPEG;
}

}  // namespace

HRESULT ReadAudioTarget(IMFMediaType* type, AudioTarget* target) {
  *target = {};
  UINT32 channels = 0, rate = 0, bytesPerSecond = 0;
  if (FAILED(type->GetGUID(MF_MT_SUBTYPE, &target->subtype)) ||
      FAILED(type->GetUINT32(MF_MT_AUDIO_NUM_CHANNELS, &channels)) ||
      FAILED(type->GetUINT32(MF_MT_AUDIO_SAMPLES_PER_SECOND, &rate)) ||
      FAILED(type->GetUINT32(MF_MT_AUDIO_AVG_BYTES_PER_SECOND, &bytesPerSecond)) || channels < 1 || channels > 2 ||
      bytesPerSecond == 0) {
    return MF_E_INVALIDMEDIATYPE;
  }
  target->channels = int(channels);
  target->sampleRate = int(std::min<UINT32>(rate, INT32_MAX));
  target->bitRate = int64_t(bytesPerSecond) * 8;
  bool aac = target->subtype == MFAudioFormat_AAC;
  bool accepted = aac ? Contains(kAacRates, target->sampleRate) && AcceptsAacSettings(type)
                      : Contains(kMp3Rates, target->sampleRate) && AcceptsMp3Settings(type);
  return accepted ? S_OK : MF_E_INVALIDMEDIATYPE;
}

HRESULT ReadPcmInput(IMFMediaType* type, PcmInput* input) {
  *input = {};
  GUID subtype = GUID_NULL;
  UINT32 channels = 0, rate = 0, bits = 0;
  if (FAILED(type->GetGUID(MF_MT_SUBTYPE, &subtype)) || subtype != MFAudioFormat_PCM ||
      FAILED(type->GetUINT32(MF_MT_AUDIO_NUM_CHANNELS, &channels)) ||
      FAILED(type->GetUINT32(MF_MT_AUDIO_SAMPLES_PER_SECOND, &rate)) ||
      FAILED(type->GetUINT32(MF_MT_AUDIO_BITS_PER_SAMPLE, &bits))) {
    return MF_E_INVALIDMEDIATYPE;
  }
  if (channels < 1 || channels > kMaxInputChannels || rate < 1 || rate > kMaxInputRate ||
      (bits != 8 && bits != 16 && bits != 24 && bits != 32)) {
    return MF_E_INVALIDMEDIATYPE;
  }
  input->channels = int(channels);
  input->sampleRate = int(rate);
  input->bitsPerSample = int(bits);
  UINT32 blockAlign = MFGetAttributeUINT32(type, MF_MT_AUDIO_BLOCK_ALIGNMENT, UINT32(input->BlockBytes()));
  if (blockAlign != UINT32(input->BlockBytes())) return MF_E_INVALIDMEDIATYPE;
  UINT32 mask = MFGetAttributeUINT32(type, MF_MT_AUDIO_CHANNEL_MASK, 0);
  // A mask that names another number of speakers than there are channels says nothing.
  input->channelMask = std::popcount(mask) == input->channels ? mask : 0;
  return S_OK;
}

}  // namespace tessel::platform
