// What the module answers for an input, as a user with a player meets it: the input is
// opened through the host's reading session, its first video and first audio stream
// are subscribed, and frames are asked for at the start, at the last frame of the
// length the stream tells, and past it.
#pragma once

#include <ostream>
#include <string>

namespace tessel::damaged {

enum class Verdict {
  NO_READER,      // no file format claims it: an io error "No reader for ..."
  NO_STREAMS,     // a format claims it, but it holds no stream to read: Execute refuses
  FRAMES,         // the first frame and the last come whole; past the end "End of stream"
  ENDS_EARLY,     // the first frame comes whole, the stream ends before its last one
  END_OF_STREAM,  // a video stream without a single frame: "End of stream" at once
  NO_PICTURE,     // a video stream without a single frame whose first Execute succeeds all
                  // the same: the sound, delivered whole then, rewinds the reader, and
                  // that clears the end the video stream met
  SOUND,          // sound only; every Execute succeeds
  FAILS,          // opening or reading fails with another error
};

struct Answer {
  Verdict verdict = Verdict::FAILS;
  int videoStreams = 0;
  int audioStreams = 0;
  bool sound = false;  // the first audio stream delivered bytes
  bool operator==(const Answer&) const = default;
};

// The answer for the url; detail tells what led to it, for a failure message.
Answer ReadAsAPlayer(const std::string& url, std::string& detail);

std::ostream& operator<<(std::ostream& out, const Answer& answer);

}  // namespace tessel::damaged
