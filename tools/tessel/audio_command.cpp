// tessel audio FILE -o OUT.wav [--stream N]: the sound of an audio stream as the module
// delivers it, in a WAV file. The whole sound comes at the first Execute.
#include <cinttypes>
#include <cstdio>

#include "command_arguments.h"
#include "commands.h"
#include "host_text.h"
#include "media_file.h"
#include "session.h"
#include "stream_info.h"
#include "vorna/timevalue.h"
#include "vorna_sinks.h"
#include "wav_writer.h"

namespace tessel::cli {

namespace {

const ArgumentSpec AUDIO_ARGUMENTS{{"-o", "--stream"}, {}, 1, "one FILE"};

const StreamInfo* FindAudioStream(const std::vector<StreamInfo>& streams, int64_t wanted) {
  int64_t seen = 0;
  for (const StreamInfo& stream : streams)
    if (stream.kind == StreamKind::kAudio && !stream.formats.empty() && seen++ == wanted) return &stream;
  return nullptr;
}

// The module delivers 32-bit (and wider) sound as float and narrower sound as integers.
bool LayoutOf(const FormatInfo& format, SoundLayout& layout) {
  if (!format.channelCount || !format.bitsPerChannel || !format.sampleRate) return false;
  layout = {*format.channelCount, *format.bitsPerChannel, int64_t(*format.sampleRate + 0.5), *format.bitsPerChannel >= 32};
  return true;
}

bool CollectSound(MediaFile& file, const StreamInfo& stream, std::vector<uint8_t>& bytes, Failure& failure) {
  auto sink = vorna::host::AttachAudioSink(file.Reading().GetStreams()[stream.index]);
  if (!sink) {
    failure = {kExitFailure, file.Name() + ": stream " + std::to_string(stream.index) + " takes no audio sink"};
    return false;
  }
  vorna::Result<void> done = file.Reading().Subscribe(stream.index, vorna::MakeData(vorna::Int64(stream.formats.front().key)));
  if (!done.IsError()) done = file.Reading().PrepareExecute();
  if (!done.IsError()) done = file.Reading().Execute(vorna::TimeValue(0.0), 0);
  // The end of a stream is no failure here: the sound is complete by then.
  if (done.IsError() && !vorna::IsErrorOfClass(done.GetError(), vorna::g_MediaStreamEOFErrorObject)) {
    failure = {kExitFailure, file.Name() + ": reading the sound failed: " + ErrorMessage(done.GetError())};
    return false;
  }
  bytes = sink->GetBytes();
  return true;
}

bool ReadSoundRequest(const Options& options, std::string& file, SoundRequest& request, Failure& failure) {
  CommandArguments arguments;
  if (!arguments.Parse(options.arguments, AUDIO_ARGUMENTS, failure)) return false;
  if (!arguments.Has("-o")) {
    failure = UsageFailure("audio needs -o OUT.wav");
    return false;
  }
  file = arguments.Positional(0);
  request.output = arguments.Text("-o");
  return arguments.Count("--stream", 0, 0, INT32_MAX, request.audioStream, failure);
}

}  // namespace

bool WriteSound(const std::string& path, const SoundRequest& request, Failure& failure) {
  MediaFile file;
  if (!file.Open(path, failure)) return false;
  std::vector<StreamInfo> streams = DescribeStreams(file.Reading());
  const StreamInfo* stream = FindAudioStream(streams, request.audioStream);
  SoundLayout layout;
  if (!stream || !LayoutOf(stream->formats.front(), layout)) {
    failure = {kExitFailure, path + ": has no audio stream " + std::to_string(request.audioStream)};
    return false;
  }
  std::vector<uint8_t> bytes;
  if (!CollectSound(file, *stream, bytes, failure) || !WriteWav(request.output, layout, bytes, failure.message))
    return false;
  double seconds = double(bytes.size()) / double(layout.channels * layout.bitsPerSample / 8) / double(layout.sampleRate);
  std::printf("%s: %" PRId64 " channels, %" PRId64 " bits%s, %" PRId64 " Hz, %.3f s\n", request.output.c_str(),
              layout.channels, layout.bitsPerSample, layout.isFloat ? " float" : "", layout.sampleRate, seconds);
  return true;
}

int RunAudio(const Options& options) {
  std::string file;
  SoundRequest request;
  Failure failure;
  Session session;
  if (!ReadSoundRequest(options, file, request, failure) || !session.Open(options, failure) ||
      !WriteSound(file, request, failure))
    return Report(failure);
  return kExitOk;
}

}  // namespace tessel::cli
