#include "mf_reader_session.h"

#include <mfapi.h>
#include <wrl/client.h>

#include <new>
#include <utility>

#include "media_win_mf.h"
#include "vorna/errorbase.h"
#include "vorna/refcounter.h"
#include "vorna/system.h"
#include "vorna/win_com.h"
#include "win_mfstream.h"
#include "windows_version.h"

namespace tessel {

using namespace vorna;
using Microsoft::WRL::ComPtr;

namespace {

void ReleaseReader(MFReaderSession& session) {
  if (session.reader) std::exchange(session.reader, nullptr)->Release();
}

// An attribute store with one switch set to 1.
Result<ComPtr<IMFAttributes>> MakeProcessingAttributes(const GUID& processing) {
  ComPtr<IMFAttributes> attributes;
  VORNA_RETURN_ON_ERROR(CheckHResult(MFCreateAttributes(&attributes, 1)));
  VORNA_RETURN_ON_ERROR(CheckHResult(attributes->SetUINT32(processing, 1)));
  return attributes;
}

// Creates session.reader for url with attributes. The outer Result carries the errors
// of the module's own steps (the path, the byte stream), which end the open; the inner
// HRESULT is the platform's answer, which the caller judges.
Result<HRESULT> CreateReader(MFReaderSession& session, const Url& url, IMFAttributes* attributes) {
  if (g_mediaFoundationUseMSUrlReader) {
    VORNA_ASSIGN_OR_RETURN(String path, url.GetSystemPath());
    VORNA_ASSIGN_OR_RETURN(BaseArray<Utf16Char> widePath, path.GetUtf16());
    ReleaseReader(session);
    return MFCreateSourceReaderFromURL(widePath.GetData(), attributes, &session.reader);
  }
  // The stream deletes itself at its last Release.
  MFStream* stream = new (std::nothrow) MFStream();
  if (!stream) return RaiseError(g_OutOfMemoryErrorObject, VORNA_SOURCE_LOCATION);
  stream->AddRef();
  Result<void> opened = stream->Init(url);
  if (opened.IsError()) {
    stream->Release();
    return opened.GetErrorResult();
  }
  ReleaseReader(session);
  HRESULT hr = MFCreateSourceReaderFromByteStream(stream, attributes, &session.reader);
  stream->Release();
  return hr;
}

}  // namespace

MFReaderSession::~MFReaderSession() {
  if (reader) std::exchange(reader, nullptr)->Release();
}

SessionRef::SessionRef(const SessionRef& other) : _session(other._session) {
  if (_session) RefCounter::AddReference(_session);
}

SessionRef::SessionRef(SessionRef&& other) noexcept : _session(std::exchange(other._session, nullptr)) {}

SessionRef& SessionRef::operator=(SessionRef other) noexcept {
  std::swap(_session, other._session);
  return *this;
}

SessionRef::~SessionRef() { Reset(); }

void SessionRef::Reset() {
  MFReaderSession* session = std::exchange(_session, nullptr);
  if (!session || !RefCounter::RemoveReference(session)) return;
  session->~MFReaderSession();
  System::FreeCounted(session);
}

SessionRef SessionRef::Share(MFReaderSession& session) {
  RefCounter::AddReference(&session);
  SessionRef shared;
  shared._session = &session;
  return shared;
}

Result<SessionRef> SessionRef::Create() {
  void* block = System::AllocCounted(sizeof(MFReaderSession), VORNA_SOURCE_LOCATION);
  if (!block) return CreateError(VORNA_SOURCE_LOCATION, 0);
  SessionRef session;
  session._session = new (block) MFReaderSession();
  return session;
}

Result<void> OpenSource(MFReaderSession& session, const Url& url) {
  ReleaseReader(session);
  if (!g_mediaFoundationDisableHardwareYUVtoRGB && IsWindowsVersionOrGreater(6, 2, 0)) {
    VORNA_ASSIGN_OR_RETURN(ComPtr<IMFAttributes> advanced,
                           MakeProcessingAttributes(MF_SOURCE_READER_ENABLE_ADVANCED_VIDEO_PROCESSING));
    VORNA_ASSIGN_OR_RETURN(HRESULT created, CreateReader(session, url, advanced.Get()));
    if (SUCCEEDED(created)) {
      session.advancedProcessing = true;
      return OK;
    }
    // Without the hardware path the source is opened once more, plainly.
  }
  VORNA_ASSIGN_OR_RETURN(ComPtr<IMFAttributes> plain, MakeProcessingAttributes(MF_SOURCE_READER_ENABLE_VIDEO_PROCESSING));
  VORNA_ASSIGN_OR_RETURN(HRESULT created, CreateReader(session, url, plain.Get()));
  VORNA_RETURN_ON_ERROR(CheckHResult(created));
  session.advancedProcessing = false;
  return OK;
}

}  // namespace tessel
