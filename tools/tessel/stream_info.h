// What a reading session offers: its streams, each with the formats it can deliver,
// read out of the format dictionaries. A property the format does not have stays empty.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "vorna_session.h"

namespace tessel::cli {

enum class StreamKind { kVideo, kAudio, kOther };

struct FormatInfo {
  int64_t key = 0;
  std::optional<std::string> pixelFormat;
  std::optional<int64_t> width;
  std::optional<int64_t> height;
  std::optional<double> aspectRatio;
  std::optional<double> fps;
  std::optional<double> startTime;  // seconds; empty also when the stream does not know it
  std::optional<double> duration;   // seconds
  std::optional<int64_t> channelCount;
  std::optional<int64_t> bitsPerChannel;
  std::optional<double> sampleRate;
};

struct StreamInfo {
  int64_t index = 0;  // in the session's list of streams
  StreamKind kind = StreamKind::kOther;
  std::vector<FormatInfo> formats;
};

const char* KindName(StreamKind kind);
std::vector<StreamInfo> DescribeStreams(const vorna::host::ReadingSession& session);

// The format of a stream under key, or null.
const FormatInfo* FindFormat(const StreamInfo& stream, int64_t key);

}  // namespace tessel::cli
