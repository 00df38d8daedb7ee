#include "stream_info.h"

#include <cfloat>

#include "host_text.h"
#include "vorna/mediasession_keys.h"
#include "vorna/mediasession_stream.h"
#include "vorna/referencedata.h"
#include "vorna/timevalue.h"

namespace tessel::cli {

namespace {

using vorna::InternedId;
using vorna::MediaStreamFormat;

template <typename T>
std::optional<T> Read(const MediaStreamFormat& format, const InternedId& key) {
  vorna::Result<T> value = format.Get<T>(key);
  if (value.IsError()) return std::nullopt;
  return value.GetValue();
}

// Times are TimeValues in a stream's format; plain seconds are taken as well.
std::optional<double> ReadSeconds(const MediaStreamFormat& format, const InternedId& key) {
  if (std::optional<vorna::TimeValue> time = Read<vorna::TimeValue>(format, key)) return time->GetSeconds();
  return Read<vorna::Float64>(format, key);
}

std::optional<std::string> ReadPixelFormat(const MediaStreamFormat& format) {
  vorna::Result<vorna::Data> value = format.GetData(vorna::g_mediaFormatImagePixelformat);
  if (value.IsError()) return std::nullopt;
  vorna::PixelFormat pixelFormat(vorna::GetObjectFromData<vorna::PixelFormatInterface>(&value.GetValue()));
  if (!pixelFormat) return std::nullopt;
  return std::string(pixelFormat.GetShortName().GetCString());
}

FormatInfo DescribeFormat(const MediaStreamFormat& format, int64_t key) {
  FormatInfo info;
  info.key = key;
  info.pixelFormat = ReadPixelFormat(format);
  info.width = Read<vorna::Int64>(format, vorna::g_mediaFormatImageWidth);
  info.height = Read<vorna::Int64>(format, vorna::g_mediaFormatImageHeight);
  info.aspectRatio = Read<vorna::Float64>(format, vorna::g_mediaFormatImageAspectratio);
  info.fps = Read<vorna::Float64>(format, vorna::g_mediaFormatVideoFps);
  // A stream that does not know its start gives minus the largest number.
  info.startTime = ReadSeconds(format, vorna::g_mediaFormatVideoStarttime);
  if (info.startTime && *info.startTime <= -DBL_MAX) info.startTime.reset();
  info.duration = ReadSeconds(format, vorna::g_mediaFormatVideoDuration);
  info.channelCount = Read<vorna::Int64>(format, vorna::g_mediaFormatAudioChannelcount);
  info.bitsPerChannel = Read<vorna::Int64>(format, vorna::g_mediaFormatAudioBitsperchannel);
  info.sampleRate = Read<vorna::Float64>(format, vorna::g_mediaFormatAudioSamplerate);
  return info;
}

StreamKind KindOf(const vorna::MediaStream& stream) {
  if (vorna::Cast<vorna::MediaStreamImageDataImportInterface>(stream)) return StreamKind::kVideo;
  if (vorna::Cast<vorna::MediaStreamAudioDataImportInterface>(stream)) return StreamKind::kAudio;
  return StreamKind::kOther;
}

}  // namespace

const char* KindName(StreamKind kind) {
  switch (kind) {
    case StreamKind::kVideo: return "video";
    case StreamKind::kAudio: return "audio";
    case StreamKind::kOther: break;
  }
  return "other";
}

std::vector<StreamInfo> DescribeStreams(const vorna::host::ReadingSession& session) {
  std::vector<StreamInfo> streams;
  const vorna::BaseArray<vorna::MediaStream>& all = session.GetStreams();
  for (vorna::Int i = 0; i < all.GetCount(); ++i) {
    StreamInfo info{i, KindOf(all[i]), {}};
    vorna::Result<vorna::BaseArray<vorna::Data>> keys = all[i].GetFormats();
    if (!keys.IsError()) {
      for (const vorna::Data& key : keys.GetValue()) {
        vorna::Result<vorna::Int64> number = vorna::GetDataValue<vorna::Int64>(key);
        if (!number.IsError()) info.formats.push_back(DescribeFormat(all[i].GetFormat(key), number.GetValue()));
      }
    }
    streams.push_back(std::move(info));
  }
  return streams;
}

const FormatInfo* FindFormat(const StreamInfo& stream, int64_t key) {
  for (const FormatInfo& format : stream.formats)
    if (format.key == key) return &format;
  return nullptr;
}

}  // namespace tessel::cli
