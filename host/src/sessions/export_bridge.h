// The export bridge: the converter between an export's input (a file's loader, or the
// test-pattern source) and its saver. It picks the input's video stream and its first
// audio stream, subscribes to them, and offers what they deliver as export streams: an
// image stream whose format tells the saver the size, pixel aspect, frame rate and
// export settings, and an audio stream that holds the whole sound. The saver passes
// each call of the session up to the bridge first, and the bridge passes it on to the
// input, so the session's time reaches the input shifted by the export's first second.
#pragma once

#include <optional>

#include "vorna/datadictionary.h"
#include "vorna/mediasession_converter.h"

namespace vorna::host {

struct ExportBridgeRequest {
  Int videoStream = 0;          // counts the input's video streams, from 0
  Bool squarePixels = false;    // the square-pixel format (key -1) when the stream has one
  Float64 from = 0;             // seconds of the source at which the export starts
  Float64 to = 0;               // seconds of the source at which it ends; infinite: the end
  std::optional<Float64> fps;   // none: the stream's own
  Bool withAudio = true;
  DataDictionary settings;      // the saver's export settings
};

// What the bridge found in Analyze.
struct ExportBridgePlan {
  Float64 fps = 0;     // 0 when neither the request nor the stream has one (up to 10000)
  Float64 end = 0;     // seconds of the source at which the export ends; infinite: unknown
  Int width = 0;
  Int height = 0;
  Bool withAudio = false;
};

Result<MediaConverter> CreateExportBridge(const ExportBridgeRequest& request);
// The plan of a bridge after its Analyze; null before, or for another object.
const ExportBridgePlan* GetExportBridgePlan(const ObjectInterface& bridge);

}  // namespace vorna::host
