// The AVI file functions: opening and creating, streams, formats, writing, releasing.
// Each checks its handles and arguments and hands the rest to the file and stream
// objects.
#include "avifil32/avi_file.h"
#include "avifil32/compressed_stream.h"
#include "mfplat/wide_path.h"
#include "platform_counters.h"

namespace tessel::platform {

namespace {

bool LibraryStarted() {
  auto& counters = GetCounters();
  return counters.aviInitCalls.load() > counters.aviExitCalls.load();
}

HRESULT OpenFile(LPCWSTR path, UINT mode, IAVIFile** file) {
  if ((mode & OF_CREATE) == 0 || (mode & (OF_WRITE | OF_READWRITE)) == 0) return AVIERR_UNSUPPORTED;
  std::unique_ptr<AviMuxer> muxer;
  HRESULT hr = AviMuxer::Create(Utf8FromWide(path), &muxer);
  if (FAILED(hr)) return hr;
  ComPtr<IAVIFile> made = Make<AviFile>(std::move(muxer));
  if (!made) return AVIERR_MEMORY;
  *file = made.Detach();
  return S_OK;
}

}  // namespace

}  // namespace tessel::platform

using namespace tessel::platform;

extern "C" HRESULT WINAPI AVIFileOpenW(PAVIFILE* ppfile, LPCWSTR szFile, UINT uMode, LPCLSID lpHandler) {
  if (!ppfile) return AVIERR_BADPARAM;
  *ppfile = nullptr;
  if (!szFile || szFile[0] == 0) return AVIERR_BADPARAM;
  if (!LibraryStarted()) return CO_E_NOTINITIALIZED;
  if (lpHandler) return AVIERR_UNSUPPORTED;
  return OpenFile(szFile, uMode, ppfile);
}

extern "C" ULONG WINAPI AVIFileRelease(PAVIFILE pfile) { return pfile ? pfile->Release() : 0; }

extern "C" HRESULT WINAPI AVIFileCreateStreamW(PAVIFILE pfile, PAVISTREAM* ppavi, AVISTREAMINFOW* psi) {
  if (!ppavi) return AVIERR_BADPARAM;
  *ppavi = nullptr;
  if (!pfile) return AVIERR_BADHANDLE;
  return pfile->CreateStream(ppavi, psi);
}

extern "C" HRESULT WINAPI AVIMakeCompressedStream(PAVISTREAM* ppsCompressed, PAVISTREAM psSource,
                                                  AVICOMPRESSOPTIONS* lpOptions, CLSID* pclsidHandler) {
  if (!ppsCompressed) return AVIERR_BADPARAM;
  *ppsCompressed = nullptr;
  if (!psSource) return AVIERR_BADHANDLE;
  if (!lpOptions) return AVIERR_BADPARAM;
  if (pclsidHandler) return AVIERR_UNSUPPORTED;
  return CompressedStream::Create(psSource, *lpOptions, ppsCompressed);
}

extern "C" HRESULT WINAPI AVIStreamSetFormat(PAVISTREAM pavi, LONG lPos, LPVOID lpFormat, LONG cbFormat) {
  if (!pavi) return AVIERR_BADHANDLE;
  return pavi->SetFormat(lPos, lpFormat, cbFormat);
}

extern "C" HRESULT WINAPI AVIStreamWrite(PAVISTREAM pavi, LONG lStart, LONG lSamples, LPVOID lpBuffer, LONG cbBuffer,
                                         DWORD dwFlags, LONG* plSampWritten, LONG* plBytesWritten) {
  if (!pavi) return AVIERR_BADHANDLE;
  return pavi->Write(lStart, lSamples, lpBuffer, cbBuffer, dwFlags, plSampWritten, plBytesWritten);
}

extern "C" ULONG WINAPI AVIStreamRelease(PAVISTREAM pavi) { return pavi ? pavi->Release() : 0; }
