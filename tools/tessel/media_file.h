// The input of a reading command: the host's reading session on the FILE argument,
// opened while a Session has the host up. FILE is a path, or a url when it has a
// "scheme://" (file://, memory://).
#pragma once

#include <memory>
#include <string>

#include "failure.h"
#include "vorna/url.h"
#include "vorna_session.h"

namespace tessel::cli {

// The url of FILE, checked as Open checks it: kExitMissingFile when a local file does not
// exist, kExitNoReader for a directory, a usage failure for text that is no url.
bool ResolveInput(const std::string& file, vorna::Url& url, Failure& failure);

class MediaFile {
 public:
  // Fails with kExitMissingFile when a file does not exist, kExitNoReader when no file
  // format claims it.
  bool Open(const std::string& file, Failure& failure);

  vorna::host::ReadingSession& Reading() { return *_reading; }
  const std::string& Name() const { return _name; }
  const std::string& UrlText() const { return _urlText; }

  // The failure of an Execute at seconds: kExitPastEnd for the end of the stream.
  Failure ExecuteFailure(vorna::ErrorWord error, double seconds) const;

 private:
  std::unique_ptr<vorna::host::ReadingSession> _reading;
  std::string _name;
  std::string _urlText;
};

}  // namespace tessel::cli
