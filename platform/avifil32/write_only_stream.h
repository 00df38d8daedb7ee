// WriteOnlyStream: the base of the platform's AVI streams. Streams here are written,
// never read back or edited; this answers the reading and editing methods of
// IAVIStream with their statuses, so that each stream class writes only what it does.
#pragma once

#include <vector>

#include "com.h"
#include "vfw.h"

namespace tessel::platform {

class WriteOnlyStream : public RuntimeClass<RuntimeClassFlags<ClassicCom>, IAVIStream> {
 public:
  HRESULT STDMETHODCALLTYPE Create(LPARAM, LPARAM) override { return AVIERR_UNSUPPORTED; }
  LONG STDMETHODCALLTYPE FindSample(LONG, LONG) override { return -1; }
  HRESULT STDMETHODCALLTYPE Read(LONG, LONG, LPVOID, LONG, LONG*, LONG*) override { return AVIERR_UNSUPPORTED; }
  HRESULT STDMETHODCALLTYPE Delete(LONG, LONG) override { return AVIERR_UNSUPPORTED; }
  HRESULT STDMETHODCALLTYPE ReadData(DWORD, LPVOID, LONG*) override { return AVIERR_NODATA; }
  HRESULT STDMETHODCALLTYPE WriteData(DWORD, LPVOID, LONG) override { return AVIERR_UNSUPPORTED; }
  HRESULT STDMETHODCALLTYPE SetInfo(AVISTREAMINFOW*, LONG) override { return AVIERR_UNSUPPORTED; }

 protected:
  // Copies a format into the caller's buffer as ReadFormat does: with a null buffer
  // only its size, otherwise as much as fits.
  static HRESULT CopyFormat(const std::vector<uint8_t>& format, LPVOID buffer, LONG* size);
  // Copies stream information as Info does, cut to the caller's size.
  static HRESULT CopyInfo(const AVISTREAMINFOW& info, AVISTREAMINFOW* buffer, LONG size);
};

}  // namespace tessel::platform
