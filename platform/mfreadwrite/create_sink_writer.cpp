// MFCreateSinkWriterFromURL. The container is chosen before anything touches the disk;
// then the file is made, so that a folder that is missing or can't be written fails
// here, as on the system.
#include "mferror.h"
#include "mfplat/startup.h"
#include "mfplat/wide_path.h"
#include "mfreadwrite.h"
#include "mfreadwrite/codec_log.h"
#include "mfreadwrite/sink_writer.h"

using namespace tessel::platform;

extern "C" HRESULT WINAPI MFCreateSinkWriterFromURL(LPCWSTR url, IMFByteStream* byteStream,
                                                    IMFAttributes* attributes, IMFSinkWriter** writer) {
  if (!writer) return E_POINTER;
  *writer = nullptr;
  if (byteStream) return E_NOTIMPL;
  if (!url) return E_INVALIDARG;
  if (!MediaFoundationStarted()) return MF_E_PLATFORM_NOT_INITIALIZED;
  // Writers are synchronous only: a writer asked to call back is refused.
  if (attributes && attributes->GetItem(MF_SINK_WRITER_ASYNC_CALLBACK, nullptr) == S_OK) return E_NOTIMPL;
  std::string path = Utf8FromWide(url);
  const SinkContainer* container = nullptr;
  HRESULT hr = ChooseContainer(attributes, path, &container);
  std::unique_ptr<OutputFile> file;
  if (SUCCEEDED(hr)) hr = OutputFile::Create(path, &file);
  if (FAILED(hr)) return hr;
  TakeOverCodecLog();
  return SinkWriter::Create(*container, std::move(file), writer);
}
