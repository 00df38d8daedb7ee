#include "mf_writer_audio.h"

#include <mfapi.h>
#include <wrl/client.h>

#include <cstdint>
#include <cstring>

#include "export_settings.h"
#include "vorna/formatstring.h"
#include "vorna/win_com.h"

namespace tessel {

using namespace vorna;
using Microsoft::WRL::ComPtr;

namespace {

struct AudioChoice {
  GUID subtype;
  Int64 sampleRate;
  UINT32 bytesPerSecond;
  Bool mp3;
};

Result<AudioChoice> ChooseAudio(const DataDictionary& settings) {
  const Id codec = settings.Get<Id>(g_settingAudioCodec, Id("aac"));
  const Int64 sampleRate = settings.Get<Int64>(g_settingAudioSamplerate, 48000);
  const Int64 kilobitrate = settings.Get<Int64>(g_settingAudioKilobitrate, 192);
  const Bool mp3 = codec == Id("mp3");
  if (!mp3 && codec != Id("aac")) {
    String message = FormatToString("Invalid audio codec: @", codec);
    return RaiseError(g_MediaSessionWrongTypeErrorObject, VORNA_SOURCE_LOCATION, &message);
  }
  // A rate of 0 leaves the MP3 block size without a value, and no encoder takes one
  // below 1 Hz or beyond 32 bits: refused here, with the rate in the message.
  if (sampleRate <= 0 || sampleRate > UINT32_MAX) {
    String message = FormatToString("Invalid audio sample rate: @", sampleRate);
    return RaiseError(g_IllegalArgumentErrorObject, VORNA_SOURCE_LOCATION, &message);
  }
  return AudioChoice{mp3 ? MFAudioFormat_MP3 : MFAudioFormat_AAC, sampleRate, UINT32(kilobitrate * 1000 / 8), mp3};
}

// The part of MPEGLAYER3WAVEFORMAT behind its WAVEFORMATEX, little-endian: the MPEG id,
// padding off, the block size of one frame of 1152 samples, one frame per block, no delay.
Result<void> SetMp3Format(IMFMediaType* type, const AudioChoice& choice) {
  const WORD blockSize = WORD(Int64(choice.bytesPerSecond) * 1152 / choice.sampleRate);
  const UINT8 userData[12] = {1, 0, 2, 0, 0, 0, UINT8(blockSize), UINT8(blockSize >> 8), 1, 0, 0, 0};
  return CheckHResult(type->SetBlob(MF_MT_USER_DATA, userData, sizeof(userData)));
}

// Low complexity AAC at level 2, raw blocks, with a stereo channel mask also for one
// channel.
Result<void> SetAacFormat(IMFMediaType* type) {
  VORNA_RETURN_ON_ERROR(CheckHResult(type->SetUINT32(MF_MT_AUDIO_BITS_PER_SAMPLE, 16)));
  VORNA_RETURN_ON_ERROR(CheckHResult(type->SetUINT32(MF_MT_AUDIO_BLOCK_ALIGNMENT, 1)));
  VORNA_RETURN_ON_ERROR(CheckHResult(type->SetUINT32(MF_MT_AAC_AUDIO_PROFILE_LEVEL_INDICATION, 0x29)));
  VORNA_RETURN_ON_ERROR(CheckHResult(type->SetUINT32(MF_MT_AUDIO_CHANNEL_MASK, 3)));
  return CheckHResult(type->SetUINT32(MF_MT_AAC_PAYLOAD_TYPE, 0));
}

Result<ComPtr<IMFMediaType>> AudioOutputType(const AudioChoice& choice, Int channels) {
  ComPtr<IMFMediaType> type;
  VORNA_RETURN_ON_ERROR(CheckHResult(MFCreateMediaType(&type)));
  VORNA_RETURN_ON_ERROR(CheckHResult(type->SetGUID(MF_MT_MAJOR_TYPE, MFMediaType_Audio)));
  VORNA_RETURN_ON_ERROR(CheckHResult(type->SetGUID(MF_MT_SUBTYPE, choice.subtype)));
  VORNA_RETURN_ON_ERROR(CheckHResult(type->SetUINT32(MF_MT_AUDIO_NUM_CHANNELS, channels == 1 ? 1 : 2)));
  VORNA_RETURN_ON_ERROR(CheckHResult(type->SetUINT32(MF_MT_AUDIO_SAMPLES_PER_SECOND, UINT32(choice.sampleRate))));
  VORNA_RETURN_ON_ERROR(CheckHResult(type->SetUINT32(MF_MT_AUDIO_AVG_BYTES_PER_SECOND, choice.bytesPerSecond)));
  VORNA_RETURN_ON_ERROR(choice.mp3 ? SetMp3Format(type.Get(), choice) : SetAacFormat(type.Get()));
  return type;
}

// The source's own PCM: its rate, channels and bits; the platform converts.
Result<ComPtr<IMFMediaType>> AudioInputType(const AudioObjectInterface& sound) {
  const Int channels = sound.GetChannelCount();
  const Int bits = sound.GetBitsPerChannel();
  const Float64 rate = sound.GetSampleRate();
  const Int blockAlign = channels * (bits / 8);
  ComPtr<IMFMediaType> type;
  VORNA_RETURN_ON_ERROR(CheckHResult(MFCreateMediaType(&type)));
  VORNA_RETURN_ON_ERROR(CheckHResult(type->SetGUID(MF_MT_MAJOR_TYPE, MFMediaType_Audio)));
  VORNA_RETURN_ON_ERROR(CheckHResult(type->SetGUID(MF_MT_SUBTYPE, MFAudioFormat_PCM)));
  VORNA_RETURN_ON_ERROR(CheckHResult(type->SetUINT32(MF_MT_AUDIO_SAMPLES_PER_SECOND, UINT32(rate))));
  VORNA_RETURN_ON_ERROR(CheckHResult(type->SetUINT32(MF_MT_AUDIO_NUM_CHANNELS, UINT32(channels))));
  VORNA_RETURN_ON_ERROR(CheckHResult(type->SetUINT32(MF_MT_AUDIO_AVG_BYTES_PER_SECOND, UINT32(rate * Float64(blockAlign)))));
  VORNA_RETURN_ON_ERROR(CheckHResult(type->SetUINT32(MF_MT_AUDIO_BLOCK_ALIGNMENT, UINT32(blockAlign))));
  VORNA_RETURN_ON_ERROR(CheckHResult(type->SetUINT32(MF_MT_AUDIO_BITS_PER_SAMPLE, UINT32(bits))));
  VORNA_RETURN_ON_ERROR(CheckHResult(type->SetUINT32(MF_MT_ALL_SAMPLES_INDEPENDENT, 1)));
  return type;
}

// Copies the track into buffer; the lock is given back on every path.
Result<void> FillBuffer(IMFMediaBuffer* buffer, const Block<UChar>& track) {
  BYTE* data = nullptr;
  VORNA_RETURN_ON_ERROR(CheckHResult(buffer->Lock(&data, nullptr, nullptr)));
  if (data && track.data && track.count > 0) std::memcpy(data, track.data, size_t(track.count));
  return CheckHResult(buffer->Unlock());
}

}  // namespace

Result<DWORD> AddAudioStream(IMFSinkWriter* sinkWriter, const DataDictionary& settings,
                             const AudioObjectInterface& sound) {
  VORNA_ASSIGN_OR_RETURN(AudioChoice choice, ChooseAudio(settings));
  VORNA_ASSIGN_OR_RETURN(ComPtr<IMFMediaType> output, AudioOutputType(choice, sound.GetChannelCount()));
  DWORD index = 0;
  VORNA_RETURN_ON_ERROR(CheckHResult(sinkWriter->AddStream(output.Get(), &index)));
  VORNA_ASSIGN_OR_RETURN(ComPtr<IMFMediaType> input, AudioInputType(sound));
  VORNA_RETURN_ON_ERROR(CheckHResult(sinkWriter->SetInputMediaType(index, input.Get(), nullptr)));
  return index;
}

Result<void> WriteWholeTrack(IMFSinkWriter* sinkWriter, DWORD stream, const AudioObjectInterface& sound) {
  const Block<UChar> track = sound.GetDataPtr();
  // One platform buffer holds at most 32 bits of bytes: a longer track is refused, not cut.
  if (track.count > Int(UINT32_MAX)) {
    String message = FormatToString("The sound is too long to be written: @ bytes.", track.count);
    return RaiseError(g_IllegalArgumentErrorObject, VORNA_SOURCE_LOCATION, &message);
  }
  ComPtr<IMFSample> sample;
  VORNA_RETURN_ON_ERROR(CheckHResult(MFCreateSample(&sample)));
  ComPtr<IMFMediaBuffer> buffer;
  VORNA_RETURN_ON_ERROR(CheckHResult(MFCreateMemoryBuffer(DWORD(track.count), &buffer)));
  VORNA_RETURN_ON_ERROR(CheckHResult(buffer->SetCurrentLength(DWORD(track.count))));
  VORNA_RETURN_ON_ERROR(FillBuffer(buffer.Get(), track));
  VORNA_RETURN_ON_ERROR(CheckHResult(sample->AddBuffer(buffer.Get())));
  buffer.Reset();
  VORNA_RETURN_ON_ERROR(CheckHResult(sample->SetSampleTime(ToTicks(TimeValue(0.0)))));
  VORNA_RETURN_ON_ERROR(CheckHResult(sample->SetSampleDuration(ToTicks(sound.GetLength()))));
  return CheckHResult(sinkWriter->WriteSample(stream, sample.Get()));
}

}  // namespace tessel
