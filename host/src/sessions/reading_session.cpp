#include "vorna_session.h"

#include "sessions/loader_search.h"
#include "vorna/errorbase.h"

namespace vorna::host {

namespace {

constexpr SourceLocation SESSION_LOCATION{"host/readingsession", 1, 0};

}  // namespace

Result<std::unique_ptr<ReadingSession>> ReadingSession::Open(const Url& url) {
  std::unique_ptr<ReadingSession> session(new ReadingSession());
  VORNA_ASSIGN_OR_RETURN(FoundLoader found, FindLoader(url));
  session->_detected = std::move(found.detected);
  session->_handler = std::move(found.handler);
  session->_loader = found.loader;
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
