// MFReaderSession: the one source reader of an opened file, shared by the file's loader
// and every stream object that the analysis made for it, and SessionRef, the counted
// reference through which they share it. A stream is only an index into this reader.
// No lock guards a session: one thread at a time uses it (the host drives a loader on
// one thread), and only the byte stream behind the reader is entered from others.
#pragma once

#include <mfreadwrite.h>

#include "vorna/apibase.h"
#include "vorna/resultbase.h"
#include "vorna/url.h"

namespace tessel {

struct MFReaderSession {
  // Owned, one COM reference; null until OpenSource. The reader holds the byte stream.
  IMFSourceReader* reader = nullptr;
  // The reader was created with advanced video processing.
  vorna::Bool advancedProcessing = false;
  // The last frame fetch of the session's last subscribed movie stream found no frame.
  vorna::Bool endOfStream = false;
  // How far, in 100 ns ticks, a seek aims in front of the wanted time; only grows.
  vorna::Int seekMargin = 0;

  ~MFReaderSession();
};

// A counted reference to a session in a System block; null when empty.
class SessionRef {
 public:
  SessionRef() = default;
  SessionRef(const SessionRef& other);
  SessionRef(SessionRef&& other) noexcept;
  SessionRef& operator=(SessionRef other) noexcept;
  ~SessionRef();

  // A new zeroed session; the out-of-memory error of the import file without memory.
  static vorna::Result<SessionRef> Create();
  // One more reference to session, which Create made.
  static SessionRef Share(MFReaderSession& session);

  MFReaderSession* Get() const { return _session; }
  MFReaderSession* operator->() const { return _session; }
  MFReaderSession& operator*() const { return *_session; }
  explicit operator bool() const { return _session != nullptr; }
  void Reset();

 private:
  MFReaderSession* _session = nullptr;
};

// Opens url into session.reader: first with advanced video processing (unless the
// configuration switches it off or the system is older than Windows 8), then plainly.
// The source is read through an MFStream, or by the platform's own URL reader when
// g_mediaFoundationUseMSUrlReader is set.
vorna::Result<void> OpenSource(MFReaderSession& session, const vorna::Url& url);

}  // namespace tessel
