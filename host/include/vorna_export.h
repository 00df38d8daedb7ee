// The host's session driver for exporting. An export is a chain of three converters:
// the input (a file's loader, found as ReadingSession finds it, or the test-pattern
// source), the export bridge, which offers the input's video stream and first audio
// stream to the saver as export streams, and a saver of vorna.ImageSavers writing to an
// output url. Open connects and analyses the chain; Run steps the time by 1 / fps from
// the start of the export to its end and calls PrepareExecute, Execute for each frame
// and Close on the saver, which passes each call up through the bridge to the input.
// The written movie starts at 0: the bridge adds the export's first second to the time
// it passes on. A frame is written when at least half of it lies before the end. Progress goes through vorna.MediaSessionProgressInterface#1 to the
// caller, who may stop the run between frames. One thread at a time uses a session.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "vorna/datadictionary.h"
#include "vorna/mediasession_output.h"
#include "vorna/url.h"
#include "vorna_test_pattern.h"

#pragma GCC visibility push(default)

namespace vorna::host {

struct ExportRequest {
  std::string saver;          // member of vorna.ImageSavers, such as "mp4"
  Url output;
  DataDictionary settings;    // the saver's export settings; may be null
  Int videoStream = 0;        // counts the input's video streams, from 0
  Bool squarePixels = false;  // the square-pixel format (key -1), if the stream has one
  Float64 from = 0;           // seconds of the source at which the export starts
  std::optional<Float64> to;  // seconds at which it ends; none: the end of the stream
  std::optional<Float64> fps; // none: the stream's own
  Bool withAudio = true;      // the input's first audio stream, if it has one
};

struct ExportProgress {
  Int frames = 0;            // frames written so far
  Int frameCount = 0;        // frames of the whole export; 0 while its end is unknown
  Float64 movieSeconds = 0;  // length of the movie written so far
};

struct ExportSummary {
  Int frames = 0;
  Float64 movieSeconds = 0;
  Float64 fps = 0;
  Bool withAudio = false;
};

// false from the callback stops the run after the frame it was told of.
using ExportProgressCallback = std::function<Bool(const ExportProgress& progress)>;

class ExportSession {
 public:
  // Failures: the input's (an IoErrorObject "No reader for ..." when no file format
  // claims the url), a vorna.UnsupportedArgumentErrorObject when the input lacks the
  // video stream asked for or the export has no frame rate, and the saver's own
  // refusals from its Analyze, unchanged. A MediaStreamEOFErrorObject when the export's
  // stretch holds no frame.
  static Result<std::unique_ptr<ExportSession>> Open(const Url& input, const ExportRequest& request);
  static Result<std::unique_ptr<ExportSession>> OpenTestPattern(const TestPatternOptions& pattern,
                                                                const ExportRequest& request);

  ExportSession(const ExportSession&) = delete;
  ExportSession& operator=(const ExportSession&) = delete;
  // Closes the chain if Run did not.
  ~ExportSession();

  // The member of vorna.FileFormatHandlers that made the loader; empty for the pattern.
  const std::string& GetHandler() const { return _handler; }
  Float64 GetFps() const { return _fps; }
  // Frames the export will have; 0 when the input does not know its length.
  Int GetFrameCount() const { return _frameCount; }

  // Writes the movie. The first error of a frame ends the run, and so does the callback's
  // false, with a vorna.ThreadCancelledErrorObject; either way the saver is closed, and
  // what it finishes then is the caller's to keep or remove. A source that ends before
  // the export's end ends it early, unless no frame was written: then its end of stream
  // is the error. Runs once.
  Result<ExportSummary> Run(const ExportProgressCallback& progress);

 private:
  ExportSession() = default;
  Result<void> Connect(const MediaConverter& input, const ExportRequest& request);
  Result<void> ExecuteFrames(const ExportProgressCallback& progress, ExportSummary& summary);
  Result<void> Close();

  std::string _handler;
  MediaConverter _input;
  MediaConverter _bridge;
  StrongRef<MediaOutputUrlInterface> _saver;
  Float64 _from = 0;
  Float64 _fps = 0;
  Int _frameCount = 0;
  Bool _ran = false;
  Bool _closed = false;
};

// A new saver of the class entered in vorna.ImageSavers under id; an
// IllegalArgumentErrorObject when there is none.
Result<StrongRef<MediaOutputUrlInterface>> CreateSaver(const std::string& id);

}  // namespace vorna::host

#pragma GCC visibility pop
