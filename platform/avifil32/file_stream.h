// FileStream: a stream of an AVI file, the object behind the PAVISTREAM that
// AVIFileCreateStreamW gives. It holds its file, and passes formats and data to it:
// video frames as they come (compressed or uncompressed), sound as blocks.
#pragma once

#include "avifil32/avi_file.h"
#include "avifil32/write_only_stream.h"

namespace tessel::platform {

class FileStream final : public WriteOnlyStream {
 public:
  FileStream(ComPtr<AviFile> file, size_t index) : file_(std::move(file)), index_(index) {}

  HRESULT STDMETHODCALLTYPE Info(AVISTREAMINFOW* psi, LONG lSize) override;
  HRESULT STDMETHODCALLTYPE ReadFormat(LONG lPos, LPVOID lpFormat, LONG* lpcbFormat) override;
  HRESULT STDMETHODCALLTYPE SetFormat(LONG lPos, LPVOID lpFormat, LONG cbFormat) override;
  // A frame is a key frame when dwFlags holds AVIIF_KEYFRAME; sound is always.
  HRESULT STDMETHODCALLTYPE Write(LONG lStart, LONG lSamples, LPVOID lpBuffer, LONG cbBuffer, DWORD dwFlags,
                                  LONG* plSampWritten, LONG* plBytesWritten) override;

 private:
  ComPtr<AviFile> file_;
  size_t index_;
};

}  // namespace tessel::platform
