#include "player_answer.h"

#include <memory>

#include "vorna/errorbase.h"
#include "vorna/mediasession_keys.h"
#include "vorna/mediasession_stream.h"
#include "vorna/timevalue.h"
#include "vorna_session.h"
#include "vorna_sinks.h"

namespace tessel::damaged {

namespace {

using namespace vorna;

std::string ErrorText(ErrorWord error) {
  const Id* cls = GetErrorClassId(error);
  Result<CString> message = ErrorOf(error).GetMessage().GetCString();
  return std::string(cls ? cls->GetCString() : "(no class)") + ": " +
         (message.IsError() ? "" : message.GetValue().GetCString());
}

// The streams of a session, with their sinks once subscribed.
struct Subscribed {
  std::shared_ptr<host::ImageSink> image;
  std::shared_ptr<host::AudioSink> audio;
  double length = 0;     // the length the video stream's format tells
  double lastFrame = 0;  // the time of the last frame by that length
};

Result<Subscribed> SubscribeFirstStreams(host::ReadingSession& session, Answer& answer) {
  Subscribed subscribed;
  const BaseArray<MediaStream>& streams = session.GetStreams();
  for (Int i = 0; i < streams.GetCount(); ++i) {
    if (auto image = host::AttachImageSink(streams[i], "vorna.PixelFormats.RGBA:u8")) {
      if (answer.videoStreams++ > 0) continue;
      subscribed.image = image;
      MediaStreamFormat format = streams[i].GetFormat(MakeData(Int64(1)));
      const Float64 duration = format.Get<TimeValue>(g_mediaFormatVideoDuration, TimeValue(0.0)).GetSeconds();
      const Float64 fps = format.Get<Float64>(g_mediaFormatVideoFps, 0.0);
      subscribed.length = duration;
      subscribed.lastFrame = fps > 0 && duration > 1 / fps ? duration - 1 / fps : 0;
      VORNA_RETURN_ON_ERROR(session.Subscribe(i, MakeData(Int64(1))));
    } else if (auto audio = host::AttachAudioSink(streams[i])) {
      if (answer.audioStreams++ > 0) continue;
      subscribed.audio = audio;
      VORNA_RETURN_ON_ERROR(session.Subscribe(i, MakeData(Int64(0))));
    }
  }
  return subscribed;
}

// Asks for the frame of a time and tells whether a whole frame came.
Result<bool> WholeFrameAt(host::ReadingSession& session, const host::ImageSink& sink, double seconds) {
  const int64_t before = sink.GetFrameCount();
  VORNA_RETURN_ON_ERROR(session.Execute(TimeValue(seconds), MEDIASESSIONFLAGS_FORCE));
  if (sink.GetFrameCount() == before) return false;
  host::ImageFrame frame = sink.GetFrame();
  return frame.width > 0 && frame.deliveredLines == frame.height;
}

Verdict ReadVideo(host::ReadingSession& session, const Subscribed& subscribed, std::string& detail) {
  Result<bool> first = WholeFrameAt(session, *subscribed.image, 0);
  if (first.IsError()) {
    detail = "at 0: " + ErrorText(first.GetError());
    return IsErrorOfClass(first.GetError(), g_MediaStreamEOFErrorObject) ? Verdict::END_OF_STREAM : Verdict::FAILS;
  }
  if (subscribed.image->GetFrameCount() == 0) return detail = "no first frame", Verdict::NO_PICTURE;
  if (!first.GetValue()) return detail = "no whole first frame", Verdict::FAILS;
  Result<bool> last = WholeFrameAt(session, *subscribed.image, subscribed.lastFrame);
  if (last.IsError()) {
    detail = "at the last frame: " + ErrorText(last.GetError());
    return IsErrorOfClass(last.GetError(), g_MediaStreamEOFErrorObject) ? Verdict::ENDS_EARLY : Verdict::FAILS;
  }
  if (!last.GetValue()) return detail = "no whole last frame", Verdict::FAILS;
  Result<void> past = session.Execute(TimeValue(subscribed.length + 1), 0);
  if (!IsErrorOfClass(past.GetError(), g_MediaStreamEOFErrorObject)) {
    detail = "past the end: " + (past.IsError() ? ErrorText(past.GetError()) : "no error");
    return Verdict::FAILS;
  }
  return Verdict::FRAMES;
}

}  // namespace

Answer ReadAsAPlayer(const std::string& text, std::string& detail) {
  Answer answer;
  Url url;
  if (url.Set(text.c_str()).IsError()) return detail = "not a url", answer;
  Result<std::unique_ptr<host::ReadingSession>> opened = host::ReadingSession::Open(url);
  if (opened.IsError()) {
    detail = ErrorText(opened.GetError());
    if (IsErrorOfClass(opened.GetError(), g_IoErrorObject) && detail.find("No reader for") != std::string::npos)
      answer.verdict = Verdict::NO_READER;
    return answer;
  }
  host::ReadingSession& session = *opened.GetValue();
  Result<Subscribed> subscribed = SubscribeFirstStreams(session, answer);
  if (subscribed.IsError()) return detail = "subscribing: " + ErrorText(subscribed.GetError()), answer;
  if (!subscribed.GetValue().image && !subscribed.GetValue().audio) {
    Result<void> refused = session.Execute(TimeValue(0.0), 0);
    if (IsErrorOfClass(refused.GetError(), g_IllegalStateErrorObject)) answer.verdict = Verdict::NO_STREAMS;
    return answer;
  }
  if (subscribed.GetValue().image) {
    answer.verdict = ReadVideo(session, subscribed.GetValue(), detail);
  } else {
    Result<void> executed = session.Execute(TimeValue(0.0), 0);
    if (executed.IsError()) detail = ErrorText(executed.GetError());
    answer.verdict = executed.IsError() ? Verdict::FAILS : Verdict::SOUND;
  }
  answer.sound = subscribed.GetValue().audio && !subscribed.GetValue().audio->GetBytes().empty();
  Result<void> closed = session.Close();
  if (closed.IsError()) detail = "closing: " + ErrorText(closed.GetError()), answer.verdict = Verdict::FAILS;
  return answer;
}

std::ostream& operator<<(std::ostream& out, const Answer& answer) {
  static const char* const NAMES[] = {"no reader", "no streams", "frames",   "ends early",
                                      "end of stream", "no picture", "sound", "fails"};
  return out << NAMES[int(answer.verdict)] << " (" << answer.videoStreams << " video, " << answer.audioStreams
             << " audio" << (answer.sound ? ", sound" : "") << ")";
}

}  // namespace tessel::damaged
