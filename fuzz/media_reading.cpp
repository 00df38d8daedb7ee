#include "media_reading.h"

#include <algorithm>
#include <optional>

#include "fuzz_host.h"
#include "vorna/mediasession_keys.h"
#include "vorna/mediasession_stream.h"
#include "vorna/timevalue.h"
#include "vorna_session.h"
#include "vorna_sinks.h"

namespace tessel::fuzz {

namespace {

using vorna::Float64;
using vorna::Int;
using vorna::Int64;

constexpr int PLANNED_TIMES = 3;
// Times come in hundredths of a second, up to about eleven minutes.
constexpr double TIME_STEP = 0.01;

// The key of the format a stream is read in: the square-pixel one when asked for and
// offered, else the first the stream lists.
vorna::Data ChooseFormat(const vorna::MediaStream& stream, bool squarePixels) {
  vorna::Result<vorna::BaseArray<vorna::Data>> keys = stream.GetFormats();
  RequireClearAnswer(keys);
  if (keys.IsError() || keys.GetValue().GetCount() == 0) return vorna::Data();
  for (const vorna::Data& key : keys.GetValue()) {
    vorna::Result<Int64> number = vorna::GetDataValue<Int64>(key);
    if (squarePixels && !number.IsError() && number.GetValue() < 0) return key;
  }
  return keys.GetValue()[0];
}

// The time of the last frame of a video stream's format; none when it tells no length.
std::optional<double> LastFrameTime(const vorna::MediaStreamFormat& format) {
  vorna::Result<vorna::TimeValue> duration = format.Get<vorna::TimeValue>(vorna::g_mediaFormatVideoDuration);
  vorna::Result<Float64> fps = format.Get<Float64>(vorna::g_mediaFormatVideoFps);
  if (duration.IsError() || duration.GetValue().IsInfinite()) return std::nullopt;
  double frame = fps.IsError() || !(fps.GetValue() > 0) ? 0 : 1.0 / fps.GetValue();
  return std::max(0.0, duration.GetValue().GetSeconds() - frame);
}

// Subscribes every stream with a sink; the times to ask for grow by the last frame of
// each video stream. The sinks are held by the streams.
void SubscribeAll(vorna::host::ReadingSession& session, bool squarePixels, std::vector<double>& times) {
  const vorna::BaseArray<vorna::MediaStream>& streams = session.GetStreams();
  for (Int i = 0; i < streams.GetCount(); ++i) {
    const vorna::MediaStream& stream = streams[i];
    vorna::Data key = ChooseFormat(stream, squarePixels);
    bool attached = vorna::host::AttachImageSink(stream, "vorna.PixelFormats.RGBA:u8") != nullptr;
    if (attached) {
      if (std::optional<double> last = LastFrameTime(stream.GetFormat(key))) times.push_back(*last);
    } else {
      attached = vorna::host::AttachAudioSink(stream) != nullptr;
    }
    if (attached) RequireClearAnswer(session.Subscribe(i, key));
  }
}

}  // namespace

ReadPlan TakeReadPlan(FuzzedDataProvider& data) {
  ReadPlan plan;
  for (int i = 0; i < PLANNED_TIMES; ++i) plan.seconds.push_back(data.ConsumeIntegral<uint16_t>() * TIME_STEP);
  plan.squarePixels = data.ConsumeBool();
  plan.force = data.ConsumeBool();
  return plan;
}

void ReadMedia(const vorna::Url& url, const ReadPlan& plan) {
  vorna::Result<std::unique_ptr<vorna::host::ReadingSession>> opened = vorna::host::ReadingSession::Open(url);
  RequireClearAnswer(opened);
  if (opened.IsError()) return;
  vorna::host::ReadingSession& session = *opened.GetValue();
  std::vector<double> times{0.0};
  times.insert(times.end(), plan.seconds.begin(), plan.seconds.end());
  SubscribeAll(session, plan.squarePixels, times);
  RequireClearAnswer(session.PrepareExecute());
  const vorna::MEDIASESSIONFLAGS flags = plan.force ? vorna::MEDIASESSIONFLAGS_FORCE : 0;
  for (double seconds : times) RequireClearAnswer(session.Execute(vorna::TimeValue(seconds), flags));
  RequireClearAnswer(session.Close());
}

}  // namespace tessel::fuzz
