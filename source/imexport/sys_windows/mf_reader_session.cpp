#include "mf_reader_session.h"

#include <new>
#include <utility>

#include "vorna/errorbase.h"
#include "vorna/refcounter.h"
#include "vorna/system.h"

namespace tessel {

using namespace vorna;

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

Result<SessionRef> SessionRef::Create() {
  void* block = System::AllocCounted(sizeof(MFReaderSession), VORNA_SOURCE_LOCATION);
  if (!block) return CreateError(VORNA_SOURCE_LOCATION, 0);
  SessionRef session;
  session._session = new (block) MFReaderSession();
  return session;
}

}  // namespace tessel
