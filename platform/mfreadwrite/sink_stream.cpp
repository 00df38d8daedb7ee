// CreateSinkStream: the checks of a target type, in the order the system makes them:
// what the container holds, then whether there is an encoder, then the type's details.
#include "mfreadwrite/sink_stream.h"

#include "mfapi.h"
#include "mferror.h"
#include "mfreadwrite/sink_codecs.h"

namespace tessel::platform {

HRESULT CreateSinkStream(IMFMediaType* target, const SinkContainer& container, const ContainerNeeds& needs,
                         std::unique_ptr<SinkStream>* stream) {
  GUID major = GUID_NULL, subtype = GUID_NULL;
  if (FAILED(target->GetGUID(MF_MT_MAJOR_TYPE, &major)) || FAILED(target->GetGUID(MF_MT_SUBTYPE, &subtype))) {
    return MF_E_INVALIDMEDIATYPE;
  }
  const SinkCodec* codec = FindSinkCodec(subtype);
  bool video = major == MFMediaType_Video;
  if (!codec || !Holds(container, subtype) || codec->type != (video ? AVMEDIA_TYPE_VIDEO : AVMEDIA_TYPE_AUDIO) ||
      (!video && major != MFMediaType_Audio)) {
    return MF_E_INVALIDMEDIATYPE;
  }
  HRESULT hr = CheckEncoder(subtype);
  if (FAILED(hr)) return hr;
  if (video) {
    VideoTarget settings;
    hr = ReadVideoTarget(target, &settings);
    return SUCCEEDED(hr) ? CreateVideoSinkStream(settings, needs, stream) : hr;
  }
  AudioTarget settings;
  hr = ReadAudioTarget(target, &settings);
  return SUCCEEDED(hr) ? CreateAudioSinkStream(settings, needs, stream) : hr;
}

}  // namespace tessel::platform
