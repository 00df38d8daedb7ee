// The host's session driver for reading: finds a reader for a url among the published
// file formats and handlers, makes the loader, analyses it, and drives it frame by
// frame in the order a media session does: Analyze, subscribe, PrepareExecute, Execute
// any number of times, Close. One thread at a time uses a session.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "vorna/mediasession_converter.h"
#include "vorna/url.h"

#pragma GCC visibility push(default)

namespace vorna::host {

class ReadingSession {
 public:
  // Asks every member of vorna.FileFormats whether it can read url; among the handlers
  // of the formats that said yes, the one with the highest GetDependends makes the
  // loader, which is then analysed. An IoErrorObject "No reader for ..." when no format
  // claims the url.
  static Result<std::unique_ptr<ReadingSession>> Open(const Url& url);

  ReadingSession(const ReadingSession&) = delete;
  ReadingSession& operator=(const ReadingSession&) = delete;
  ~ReadingSession();

  const std::vector<std::string>& GetDetectedFormats() const { return _detected; }
  const std::string& GetHandler() const { return _handler; }
  const MediaConverter& GetLoader() const { return _loader; }
  const BaseArray<MediaStream>& GetStreams() const { return _streams; }

  // Selects formatId on the stream and subscribes to it.
  Result<void> Subscribe(Int streamIndex, const Data& formatId);
  Result<void> PrepareExecute();
  Result<void> Execute(const TimeValue& time, MEDIASESSIONFLAGS flags);
  // Closes the loader; also done by the destructor if not done before.
  Result<void> Close();

 private:
  ReadingSession() = default;

  std::vector<std::string> _detected;
  std::string _handler;
  MediaConverter _loader;
  BaseArray<MediaStream> _streams;
  Bool _closed = false;
};

}  // namespace vorna::host

#pragma GCC visibility pop
