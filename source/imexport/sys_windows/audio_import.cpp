// The sound of an import: at its first Execute an audio stream rewinds the reader and
// hands every decoded platform buffer of its track, in the order of reading, to the
// host's delegate, whatever time was asked. Nothing is converted, re-blocked or copied:
// the delegate sees each locked buffer for the length of its call.
#include <wrl/client.h>

#include "frame_fetch.h"
#include "import_streams.h"
#include "media_win_mf.h"
#include "vorna/win_com.h"

namespace tessel {

using namespace vorna;
using Microsoft::WRL::ComPtr;

namespace {

// Hands one buffer of a sample to audioData; the buffer is unlocked on every path.
Result<void> DeliverBuffer(IMFSample* sample, DWORD index, const AudioDataCallback& audioData) {
  ComPtr<IMFMediaBuffer> buffer;
  VORNA_RETURN_ON_ERROR(CheckHResult(sample->GetBufferByIndex(index, &buffer)));
  BYTE* data = nullptr;
  DWORD currentLength = 0;
  VORNA_RETURN_ON_ERROR(CheckHResult(buffer->Lock(&data, nullptr, &currentLength)));
  Result<void> delivered = audioData(AudioDataBlock{data, Int(currentLength)});
  buffer->Unlock();
  return delivered;
}

Result<void> DeliverSample(IMFSample* sample, const AudioDataCallback& audioData) {
  DWORD count = 0;
  VORNA_RETURN_ON_ERROR(CheckHResult(sample->GetBufferCount(&count)));
  for (DWORD index = 0; index < count; ++index) VORNA_RETURN_ON_ERROR(DeliverBuffer(sample, index, audioData));
  return OK;
}

Result<void> DeliverSound(MediaStreamAudioStreamWinMFImportImpl& audio, const MediaConverterInterface& input,
                          const MediaStreamAudioDataImportInterface& stream,
                          const MediaStreamPropertiesInterface& properties) {
  VORNA_ASSIGN_OR_RETURN(AudioDataCallback audioData, stream.SetAudioDataCallback(properties));
  return audio.ReadAudioSamples(input, audioData);
}

}  // namespace

Result<void> MediaStreamAudioStreamWinMFImportImpl::GetAudioData(const MediaConverterInterface& input,
                                                                const MediaStreamAudioDataImportInterface& stream,
                                                                const TimeValue&, MEDIASESSIONFLAGS) {
  if (_audioDelivered) return OK;
  // Set before anything can fail: a delivery that failed is not tried again.
  _audioDelivered = true;
  VORNA_ASSIGN_OR_RETURN(MediaStreamProperties properties,
                         CreateObjectOf<MediaStreamPropertiesInterface>(g_MediaStreamPropertiesClass, VORNA_SOURCE_LOCATION));
  VORNA_RETURN_ON_ERROR(properties.Init(stream));
  VORNA_RETURN_ON_ERROR(stream.InitStream(properties));
  Result<void> delivered = DeliverSound(*this, input, stream, properties);
  if (delivered.IsError()) {
    (void)stream.FinishStream(properties);
    return delivered;
  }
  return stream.FinishStream(properties);
}

Result<void> MediaStreamAudioStreamWinMFImportImpl::ReadAudioSamples(const MediaConverterInterface& input,
                                                                    const AudioDataCallback& audioData) {
  // An audio stream is no movie stream, so the seek only moves the reader to the start.
  VORNA_RETURN_ON_ERROR(SeekToTime(*_session, input, 0, GetObject()));
  for (;;) {
    DWORD flags = 0;
    LONGLONG timestamp = 0;
    ComPtr<IMFSample> sample;
    VORNA_RETURN_ON_ERROR(
        CheckHResult(_session->reader->ReadSample(_streamIndex, 0, nullptr, &flags, &timestamp, &sample)));
    if (flags & MF_SOURCE_READERF_ENDOFSTREAM) return OK;
    if (sample) VORNA_RETURN_ON_ERROR(DeliverSample(sample.Get(), audioData));
  }
}

}  // namespace tessel
