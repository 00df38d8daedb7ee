// MFCreateSourceReaderFromByteStream and MFCreateSourceReaderFromURL. A reader can only
// be made while the platform is started; the attributes choose the video processing.
#include "mferror.h"
#include "mfplat/startup.h"
#include "mfplat/wide_path.h"
#include "mfreadwrite.h"
#include "mfreadwrite/source_reader.h"
#include "platform_counters.h"

namespace tessel::platform {

namespace {

// Readers are synchronous only: a reader asked to call back is refused.
HRESULT ProcessingFrom(IMFAttributes* attributes, VideoProcessing* processing) {
  *processing = VideoProcessing::kNone;
  if (!attributes) return S_OK;
  if (attributes->GetItem(MF_SOURCE_READER_ASYNC_CALLBACK, nullptr) == S_OK) return E_NOTIMPL;
  if (MFGetAttributeUINT32(attributes, MF_SOURCE_READER_ENABLE_ADVANCED_VIDEO_PROCESSING, FALSE)) {
    HRESULT refused = GetCounters().refuseAdvancedProcessing.load();
    if (refused != 0) return refused;
    *processing = VideoProcessing::kAdvanced;
  } else if (MFGetAttributeUINT32(attributes, MF_SOURCE_READER_ENABLE_VIDEO_PROCESSING, FALSE)) {
    *processing = VideoProcessing::kBasic;
  }
  return S_OK;
}

}  // namespace

}  // namespace tessel::platform

using namespace tessel::platform;

extern "C" HRESULT WINAPI MFCreateSourceReaderFromByteStream(IMFByteStream* byteStream, IMFAttributes* attributes,
                                                             IMFSourceReader** reader) {
  if (!reader) return E_POINTER;
  *reader = nullptr;
  if (!byteStream) return E_INVALIDARG;
  if (!MediaFoundationStarted()) return MF_E_PLATFORM_NOT_INITIALIZED;
  VideoProcessing processing;
  HRESULT hr = ProcessingFrom(attributes, &processing);
  std::unique_ptr<Demuxer> demuxer;
  if (SUCCEEDED(hr)) hr = Demuxer::OpenByteStream(byteStream, &demuxer);
  if (SUCCEEDED(hr)) hr = SourceReader::Create(std::move(demuxer), processing, reader);
  return hr;
}

extern "C" HRESULT WINAPI MFCreateSourceReaderFromURL(LPCWSTR url, IMFAttributes* attributes,
                                                      IMFSourceReader** reader) {
  if (!reader) return E_POINTER;
  *reader = nullptr;
  if (!url) return E_INVALIDARG;
  if (!MediaFoundationStarted()) return MF_E_PLATFORM_NOT_INITIALIZED;
  VideoProcessing processing;
  HRESULT hr = ProcessingFrom(attributes, &processing);
  std::unique_ptr<Demuxer> demuxer;
  if (SUCCEEDED(hr)) hr = Demuxer::OpenFile(Utf8FromWide(url), &demuxer);
  if (SUCCEEDED(hr)) hr = SourceReader::Create(std::move(demuxer), processing, reader);
  return hr;
}
