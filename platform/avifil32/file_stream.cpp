// A stream of an AVI file.
#include "avifil32/file_stream.h"

namespace tessel::platform {

HRESULT FileStream::Info(AVISTREAMINFOW* psi, LONG lSize) { return CopyInfo(file_->StreamInfo(index_), psi, lSize); }

HRESULT FileStream::ReadFormat(LONG, LPVOID lpFormat, LONG* lpcbFormat) {
  return CopyFormat(file_->StreamFormatBytes(index_), lpFormat, lpcbFormat);
}

// The format holds for the whole stream: it is set once, at position 0.
HRESULT FileStream::SetFormat(LONG lPos, LPVOID lpFormat, LONG cbFormat) {
  if (lPos != 0) return AVIERR_UNSUPPORTED;
  return file_->SetStreamFormat(index_, lpFormat, cbFormat);
}

HRESULT FileStream::Write(LONG lStart, LONG lSamples, LPVOID lpBuffer, LONG cbBuffer, DWORD dwFlags,
                          LONG* plSampWritten, LONG* plBytesWritten) {
  if (dwFlags & ~AVIIF_KEYFRAME) return AVIERR_BADFLAGS;
  HRESULT hr;
  if (file_->StreamInfo(index_).fccType == streamtypeVIDEO) {
    hr = lSamples == 1 ? file_->WriteFrame(index_, lStart, lpBuffer, cbBuffer, (dwFlags & AVIIF_KEYFRAME) != 0)
                       : AVIERR_BADPARAM;
  } else {
    hr = file_->WriteSound(index_, lStart, lSamples, lpBuffer, cbBuffer);
  }
  if (FAILED(hr)) return hr;
  if (plSampWritten) *plSampWritten = lSamples;
  if (plBytesWritten) *plBytesWritten = cbBuffer;
  return S_OK;
}

}  // namespace tessel::platform
