#include "vorna_export.h"

#include <cmath>
#include <limits>

#include "media/media_converter_classes.h"
#include "media/media_session_progress.h"
#include "sessions/export_bridge.h"
#include "sessions/loader_search.h"
#include "vorna/component.h"
#include "vorna/extensionpoint.h"
#include "vorna/formatstring.h"

namespace vorna::host {

namespace {

constexpr SourceLocation EXPORT_LOCATION{"host/exportsession", 1, 0};
// An export whose end is unknown, or further than this, stops at the latest after a day
// of movie.
constexpr Float64 LONGEST_UNKNOWN_END = 86400.0;

ErrorResult Unsupported(const String& message) {
  return RaiseError(g_UnsupportedArgumentErrorObject, EXPORT_LOCATION, &message);
}

ErrorResult EmptyStretch() {
  String message = String::FromLiteral("End of stream");
  return RaiseError(g_MediaStreamEOFErrorObject, EXPORT_LOCATION, &message);
}

ExportBridgeRequest BridgeRequest(const ExportRequest& request) {
  ExportBridgeRequest bridge;
  bridge.videoStream = request.videoStream;
  bridge.squarePixels = request.squarePixels;
  bridge.from = request.from;
  bridge.to = request.to.value_or(std::numeric_limits<Float64>::infinity());
  bridge.fps = request.fps;
  bridge.withAudio = request.withAudio;
  bridge.settings = request.settings;
  return bridge;
}

}  // namespace

Result<StrongRef<MediaOutputUrlInterface>> CreateSaver(const std::string& id) {
  const Data* entry = ExtensionPoint::FindEntry(ExtensionPoint::Find(Id("vorna.ImageSavers")), Id(id.c_str()));
  ClassHandle* cls = GetClassFromData(entry);
  if (!cls) {
    String message = FormatToString("No saver @ in vorna.ImageSavers", id.c_str());
    return RaiseError(g_IllegalArgumentErrorObject, EXPORT_LOCATION, &message);
  }
  VORNA_ASSIGN_OR_RETURN(ObjectRef object, CreateObjectOfClass(cls, EXPORT_LOCATION));
  StrongRef<MediaOutputUrlInterface> saver(Cast<MediaOutputUrlInterface>(object));
  if (!saver) return RaiseError(g_MediaSessionWrongTypeErrorObject, EXPORT_LOCATION);
  return saver;
}

Result<std::unique_ptr<ExportSession>> ExportSession::Open(const Url& input, const ExportRequest& request) {
  std::unique_ptr<ExportSession> session(new ExportSession());
  VORNA_ASSIGN_OR_RETURN(FoundLoader found, FindLoader(input));
  session->_handler = found.handler;
  VORNA_RETURN_ON_ERROR(session->Connect(found.loader, request));
  return session;
}

Result<std::unique_ptr<ExportSession>> ExportSession::OpenTestPattern(const TestPatternOptions& pattern,
                                                                      const ExportRequest& request) {
  std::unique_ptr<ExportSession> session(new ExportSession());
  VORNA_ASSIGN_OR_RETURN(MediaConverter source, CreateTestPatternSource(pattern));
  VORNA_RETURN_ON_ERROR(session->Connect(source, request));
  return session;
}

// Input, bridge and saver joined and analysed, as the session of a media chain does.
Result<void> ExportSession::Connect(const MediaConverter& input, const ExportRequest& request) {
  _input = input;
  _from = request.from;
  VORNA_ASSIGN_OR_RETURN(_bridge, CreateExportBridge(BridgeRequest(request)));
  VORNA_ASSIGN_OR_RETURN(_saver, CreateSaver(request.saver));
  ObjectRef inputRef(_input);
  ObjectRef bridgeRef(_bridge);
  VORNA_RETURN_ON_ERROR(SetInputConverters(_bridge, {&inputRef, 1}));
  VORNA_RETURN_ON_ERROR(SetInputConverters(_saver, {&bridgeRef, 1}));
  VORNA_RETURN_ON_ERROR(_saver.SetOutputUrl(request.output));
  VORNA_RETURN_ON_ERROR(_saver.Analyze(_saver.GetInputConverter(), 0, 0));
  const ExportBridgePlan* plan = GetExportBridgePlan(_bridge);
  if (!plan) return RaiseError(g_IllegalStateErrorObject, EXPORT_LOCATION);
  if (plan->fps <= 0) return Unsupported(String::FromLiteral("The video stream has no frame rate; give one."));
  _fps = plan->fps;
  // Frames from the start of the stretch to its end, each 1 / fps: a frame is written
  // when at least half of it lies before the end. Infinite for an unknown end.
  Float64 frames = std::floor((plan->end - _from) * _fps + 0.5);
  if (!(frames > 0)) return EmptyStretch();
  _frameCount = frames < LONGEST_UNKNOWN_END * _fps ? Int(frames) : 0;
  return OK;
}

ExportSession::~ExportSession() { (void)Close(); }

Result<void> ExportSession::Close() {
  if (_closed || !_saver) return OK;
  _closed = true;
  return _saver.Close(_saver.GetInputConverter());
}

Result<ExportSummary> ExportSession::Run(const ExportProgressCallback& progress) {
  if (_ran || _closed) return RaiseError(g_IllegalStateErrorObject, EXPORT_LOCATION);
  _ran = true;
  ExportSummary summary;
  summary.fps = _fps;
  summary.withAudio = GetExportBridgePlan(_bridge)->withAudio;
  Result<void> frames = ExecuteFrames(progress, summary);
  if (frames.IsError()) {
    (void)Close();
    return frames.GetErrorResult();
  }
  VORNA_RETURN_ON_ERROR(Close());
  return summary;
}

// The frames of the export, one Execute each, until its end or the source's.
Result<void> ExportSession::ExecuteFrames(const ExportProgressCallback& progress, ExportSummary& summary) {
  ExportProgress report{0, _frameCount, 0};
  VORNA_ASSIGN_OR_RETURN(StrongRef<MediaSessionProgress> tracker, CreateMediaSessionProgress([&](Float64) {
                           return progress ? progress(report) : true;
                         }));
  VORNA_RETURN_ON_ERROR(tracker.InitProgress());
  VORNA_ASSIGN_OR_RETURN(Int job, tracker.AddProgressJob(1.0));
  ConverterBlock inputs = _saver.GetInputConverter();
  VORNA_RETURN_ON_ERROR(_saver.PrepareExecute(inputs, 0, 0));
  Int last = _frameCount > 0 ? _frameCount : Int(LONGEST_UNKNOWN_END * _fps);
  for (Int frame = 0; frame < last; ++frame) {
    Result<void> executed = _saver.Execute(inputs, TimeValue(Float64(frame) / _fps), 0);
    if (executed.IsError() && frame > 0 && IsErrorOfClass(executed.GetError(), g_MediaStreamEOFErrorObject)) break;
    VORNA_RETURN_ON_ERROR(executed);
    report.frames = summary.frames = frame + 1;
    report.movieSeconds = summary.movieSeconds = Float64(frame + 1) / _fps;
    VORNA_RETURN_ON_ERROR(
        tracker.SetProgressAndCheckBreak(job, _frameCount > 0 ? Float64(frame + 1) / Float64(_frameCount) : 0.0));
  }
  return OK;
}

}  // namespace vorna::host
