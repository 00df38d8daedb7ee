#include "vorna_session.h"

#include "vorna/errorbase.h"
#include "vorna/extensionpoint.h"
#include "vorna/fileformat.h"
#include "vorna/formatstring.h"
#include "vorna/referencedata.h"

namespace vorna::host {

namespace {

constexpr SourceLocation SESSION_LOCATION{"host/readingsession", 1, 0};

struct Detected {
  std::string id;
  const void* format;
};

// The file formats that claim url, in registry order. A format whose Detect fails
// counts as not claiming it.
std::vector<Detected> DetectFormats(const Url& url) {
  std::vector<Detected> detected;
  ExtensionPointHandle* formats = ExtensionPoint::Find(Id("vorna.FileFormats"));
  for (Int i = 0; i < ExtensionPoint::GetCount(formats); ++i) {
    const Id* key = nullptr;
    StrongRef<FileFormatInterface> format =
        GetObjectFromData<FileFormatInterface>(ExtensionPoint::GetEntry(formats, i, &key));
    Result<Bool> claims = format ? format.Detect(url) : Result<Bool>(false);
    if (!claims.IsError() && claims.GetValue()) detected.push_back({key->GetCString(), format.GetPointer()});
  }
  return detected;
}

Bool Claimed(const std::vector<Detected>& detected, const void* format) {
  for (const Detected& d : detected)
    if (d.format == format) return true;
  return false;
}

// The handler of a claiming format with the highest GetDependends, and its member id.
StrongRef<FileFormatHandlerInterface> ChooseHandler(const std::vector<Detected>& detected, std::string& id) {
  StrongRef<FileFormatHandlerInterface> best;
  ExtensionPointHandle* handlers = ExtensionPoint::Find(Id("vorna.FileFormatHandlers"));
  for (Int i = 0; i < ExtensionPoint::GetCount(handlers); ++i) {
    const Id* key = nullptr;
    StrongRef<FileFormatHandlerInterface> handler =
        GetObjectFromData<FileFormatHandlerInterface>(ExtensionPoint::GetEntry(handlers, i, &key));
    if (!handler || !Claimed(detected, handler.GetFileFormat().GetPointer())) continue;
    if (!best || handler.GetDependends() > best.GetDependends()) {
      best = handler;
      id = key->GetCString();
    }
  }
  return best;
}

ErrorResult NoReader(const Url& url) {
  String message = FormatToString("No reader for @", url.ToString());
  return RaiseError(g_IoErrorObject, SESSION_LOCATION, &message);
}

}  // namespace

Result<std::unique_ptr<ReadingSession>> ReadingSession::Open(const Url& url) {
  std::unique_ptr<ReadingSession> session(new ReadingSession());
  std::vector<Detected> detected = DetectFormats(url);
  for (const Detected& d : detected) session->_detected.push_back(d.id);
  StrongRef<FileFormatHandlerInterface> handler = ChooseHandler(detected, session->_handler);
  if (!handler) return NoReader(url);
  VORNA_ASSIGN_OR_RETURN(ObjectRef loader, handler.CreateHandler(url));
  session->_loader = MediaConverter(Cast<MediaConverterInterface>(loader));
  if (!session->_loader) return RaiseError(g_MediaSessionWrongTypeErrorObject, SESSION_LOCATION);
  VORNA_RETURN_ON_ERROR(session->_loader.Analyze({}, 0, 0));
  VORNA_ASSIGN_OR_RETURN(session->_streams, session->_loader.GetOutputStreams(0));
  return session;
}

ReadingSession::~ReadingSession() { (void)Close(); }

Result<void> ReadingSession::Subscribe(Int streamIndex, const Data& formatId) {
  if (streamIndex < 0 || streamIndex >= _streams.GetCount()) return RaiseError(g_IllegalArgumentErrorObject, SESSION_LOCATION);
  return _streams[streamIndex].SubscribeStream(formatId);
}

Result<void> ReadingSession::PrepareExecute() { return _loader.PrepareExecute({}, 0, 0); }

Result<void> ReadingSession::Execute(const TimeValue& time, MEDIASESSIONFLAGS flags) {
  return _loader.Execute({}, time, flags);
}

Result<void> ReadingSession::Close() {
  if (_closed || !_loader) return OK;
  _closed = true;
  return _loader.Close({});
}

}  // namespace vorna::host
