// Every input here is small and made from the generated clips at test time. Where the
// answer is "frames", the movie keeps what is readable; where it is "no reader", nothing
// of the file can be trusted; a fault under the stream never hangs or crashes a read.
#include "damaged_table.h"

#include <cstddef>

#include "fixtures.h"

namespace tessel::damaged {

namespace {

using fixtures::kAbsurdSize;
using fixtures::kAudioMp3;
using fixtures::kDamaged;
using fixtures::kEmpty;
using fixtures::kMovie1080;
using fixtures::kMovieAac;
using fixtures::kText;
using fixtures::kWav16;

// The clips the cases start from: H.264 with AAC, two seconds, with the index at the end
// (movie) or at the start (fast); the same in AVI and FLV; MP3 and WAV sound.
const Bytes& Movie() {
  static const Bytes bytes = Clip(kMovieAac.name);
  return bytes;
}
const Bytes& Fast() {
  static const Bytes bytes = Remuxed(kMovieAac.name, "mp4", "movflags=+faststart");
  return bytes;
}
const Bytes& Avi() {
  static const Bytes bytes = Remuxed(kMovieAac.name, "avi");
  return bytes;
}
const Bytes& Flv() {
  static const Bytes bytes = Remuxed(kMovieAac.name, "flv");
  return bytes;
}
// H.264 1920x1080 without sound, larger than a read of the reader.
const Bytes& Big() {
  static const Bytes bytes = Clip(kMovie1080.name);
  return bytes;
}
const Bytes& BigFast() {
  static const Bytes bytes = Remuxed(kMovie1080.name, "mp4", "movflags=+faststart");
  return bytes;
}
const Bytes& Mp3() {
  static const Bytes bytes = Clip(kAudioMp3);
  return bytes;
}
const Bytes& Wav() {
  static const Bytes bytes = Clip(kWav16);
  return bytes;
}

Answer NoReader() { return {Verdict::NO_READER}; }
Answer NoStreams() { return {Verdict::NO_STREAMS}; }
Answer Frames(int video, int audio) { return {Verdict::FRAMES, video, audio, audio > 0}; }
Answer EndsEarly(int video, int audio) { return {Verdict::ENDS_EARLY, video, audio, audio > 0}; }
Answer EndOfStream(int video, int audio) { return {Verdict::END_OF_STREAM, video, audio, false}; }
Answer NoPicture(int video, int audio) { return {Verdict::NO_PICTURE, video, audio, audio > 0}; }
// The answer with an audio stream that delivers nothing.
Answer Silent(Answer answer) {
  answer.sound = false;
  return answer;
}
Answer Sound() { return {Verdict::SOUND, 0, 1, true}; }

// A box field of the first (or n-th) box of type tag: offset counts from the type.
Bytes Mp4Field(const Bytes& mp4, const char* tag, std::ptrdiff_t offset, uint64_t value, int size, int n = 0) {
  return WithBigEndian(mp4, FindTag(mp4, tag, n) + offset, value, size);
}
Bytes RiffField(const Bytes& riff, const char* tag, std::ptrdiff_t offset, uint64_t value, int size) {
  return WithLittleEndian(riff, FindTag(riff, tag) + offset, value, size);
}
// Everything behind the end of the first box of type tag replaced by noise.
Bytes GarbageAfterBox(const Bytes& mp4, const char* tag) {
  const size_t at = FindTag(mp4, tag) - 4;
  const size_t size = (size_t(mp4[at]) << 24) | (size_t(mp4[at + 1]) << 16) | (size_t(mp4[at + 2]) << 8) | mp4[at + 3];
  return GarbageAfter(mp4, at + size, 7);
}

}  // namespace

const std::vector<DamagedCase>& DamagedCases() {
  static const std::vector<DamagedCase> cases = {
      // Cut short: a file with its index at the end has none left; one with the index
      // first keeps the frames before the cut.
      {"mp4 index last cut at 1%", [] { return CutAt(Movie(), 0.01); }, "", 0, NoReader()},
      {"mp4 index last cut at 25%", [] { return CutAt(Movie(), 0.25); }, "", 0, NoReader()},
      {"mp4 index last cut at 50%", [] { return CutAt(Movie(), 0.50); }, "", 0, NoReader()},
      {"mp4 index last cut at 75%", [] { return CutAt(Movie(), 0.75); }, "", 0, NoReader()},
      {"mp4 index last cut at 99%", [] { return CutAt(Movie(), 0.99); }, "", 0, NoReader()},
      {"mp4 index last cut 8 bytes short", [] { return Bytes(Movie().begin(), Movie().end() - 8); }, "", 0, Frames(1, 1)},
      {"mp4 index first cut at 1%", [] { return CutAt(Fast(), 0.01); }, "", 0, NoReader()},
      {"mp4 index first cut at 10%", [] { return CutAt(Fast(), 0.10); }, "", 0, Silent(EndsEarly(1, 1))},
      {"mp4 index first cut at 30%", [] { return CutAt(Fast(), 0.30); }, "", 0, EndsEarly(1, 1)},
      {"mp4 index first cut at 50%", [] { return CutAt(Fast(), 0.50); }, "", 0, EndsEarly(1, 1)},
      {"mp4 index first cut at 70%", [] { return CutAt(Fast(), 0.70); }, "", 0, EndsEarly(1, 1)},
      {"mp4 index first cut at 90%", [] { return CutAt(Fast(), 0.90); }, "", 0, EndsEarly(1, 1)},
      {"mp4 index first cut 8 bytes short", [] { return Bytes(Fast().begin(), Fast().end() - 8); }, "", 0, Frames(1, 1)},
      {"avi cut at 5%", [] { return CutAt(Avi(), 0.05); }, "", 0, NoReader()},
      {"avi cut at 50%", [] { return CutAt(Avi(), 0.50); }, "", 0, EndsEarly(1, 1)},
      {"avi cut at 95%", [] { return CutAt(Avi(), 0.95); }, "", 0, EndsEarly(1, 1)},
      {"flv cut at 50%", [] { return CutAt(Flv(), 0.50); }, "", 0, Frames(1, 1)},
      {"mp3 cut at 1%", [] { return CutAt(Mp3(), 0.01); }, "", 0, NoReader()},
      {"mp3 cut at 50%", [] { return CutAt(Mp3(), 0.50); }, "", 0, Sound()},
      {"wav cut inside its header", [] { return CutAt(Wav(), 0.0002); }, "", 0, NoReader()},
      {"wav cut at 50%", [] { return CutAt(Wav(), 0.50); }, "", 0, Sound()},

      // Headers with absurd sizes and counts.
      {"mp4 sample count 0xFFFFFFFF", [] { return Mp4Field(Fast(), "stsz", 12, 0xFFFFFFFF, 4); }, "", 0, NoReader()},
      {"mp4 time-to-sample entries 0x7FFFFFFF", [] { return Mp4Field(Fast(), "stts", 8, 0x7FFFFFFF, 4); }, "", 0, NoReader()},
      {"mp4 video time scale 0", [] { return Mp4Field(Fast(), "mdhd", 16, 0, 4); }, "", 0, Frames(1, 1)},
      {"mp4 movie duration 0xFFFFFFFF", [] { return Mp4Field(Fast(), "mvhd", 20, 0xFFFFFFFF, 4); }, "", 0, Frames(1, 1)},
      {"mp4 index box size 0xFFFFFFF0", [] { return Mp4Field(Fast(), "moov", -4, 0xFFFFFFF0, 4); }, "", 0, Frames(1, 1)},
      {"mp4 sample entry 65535x65535", [] { return Mp4Field(Mp4Field(Fast(), "avc1", 28, 0xFFFF, 2), "avc1", 30, 0xFFFF, 2); }, "", 0, Frames(1, 1)},
      {"avi 10000 streams", [] { return RiffField(Avi(), "avih", 32, 10000, 4); }, "", 0, Frames(1, 1)},
      {"avi 0xFFFFFFFF frames", [] { return RiffField(Avi(), "strh", 40, 0xFFFFFFFF, 4); }, "", 0, Frames(1, 1)},
      {"avi frame rate scale 0", [] { return RiffField(Avi(), "strh", 28, 0, 4); }, "", 0, Frames(1, 1)},
      {"avi frames 0x7FFFFFFF wide", [] { return RiffField(Avi(), "strf", 12, 0x7FFFFFFF, 4); }, "", 0, Frames(1, 1)},
      {"wav 65535 channels", [] { return RiffField(Wav(), "fmt ", 10, 0xFFFF, 2); }, "", 0, Sound()},
      {"wav sample rate 0", [] { return RiffField(Wav(), "fmt ", 12, 0, 4); }, "", 0, NoReader()},
      {"wav sample rate 0xFFFFFFFF", [] { return RiffField(Wav(), "fmt ", 12, 0xFFFFFFFF, 4); }, "", 0, NoReader()},
      {"wav 0 bits per sample", [] { return RiffField(Wav(), "fmt ", 22, 0, 2); }, "", 0, Sound()},
      {"wav data size 0xFFFFFFFF", [] { return RiffField(Wav(), "data", 4, 0xFFFFFFFF, 4); }, "", 0, Sound()},
      {"mp3 tag size 256 MiB", [] { return WithBigEndian(Mp3(), FindTag(Mp3(), "ID3\x04") + 6, 0x7F7F7F7F, 4); }, "", 0, NoReader()},
      {"y4m frames 12000x12000", [] { return Clip(kAbsurdSize); }, "", 0, NoStreams()},
      {"y4m frames 0x7FFFFFFF wide", [] { return Text("YUV4MPEG2 W2147483647 H2 F25:1 C420jpeg\nFRAME\n" + std::string(64, 'x')); }, "", 0, NoReader()},

      // Nothing, noise, text, and good headers on garbage.
      {"zero bytes", [] { return Clip(kEmpty); }, "", 0, NoReader()},
      {"plain text", [] { return Clip(kText); }, "", 0, NoReader()},
      {"4 KiB of noise", [] { return Noise(4096, 1); }, "", 0, NoReader()},
      {"64 KiB of noise", [] { return Noise(65536, 2); }, "", 0, NoReader()},
      {"mp4 noise over its middle", [] { return Clip(kDamaged); }, "", 0, Frames(1, 1)},
      {"mp4 index first, garbage behind the index", [] { return GarbageAfterBox(Fast(), "moov"); }, "", 0, Silent(NoPicture(1, 1))},
      {"mp4 index last, garbage behind the file type", [] { return GarbageAfterBox(Movie(), "ftyp"); }, "", 0, NoReader()},
      {"avi header list on garbage", [] { return GarbageAfter(Avi(), FindTag(Avi(), "movi"), 3); }, "", 0, Silent(NoPicture(1, 1))},
      {"wav header on garbage", [] { return GarbageAfter(Wav(), FindTag(Wav(), "data") + 8, 4); }, "", 0, Sound()},
      {"y4m header on garbage", [] { return Text("YUV4MPEG2 W64 H48 F25:1 C420jpeg\nFRAME\n" + std::string(4608, 'x')); }, "", 0, Frames(1, 0)},
      {"mp3 tag on garbage", [] { return GarbageAfter(Mp3(), 10, 5); }, "", 0, NoReader()},

      // Timestamps that run backwards.
      {"flv timestamps back by a frame from the middle", [] { return FlvTimestampsBackwards(Flv(), 40); }, "", 0, Frames(1, 1)},
      {"flv timestamps back by a second from the middle", [] { return FlvTimestampsBackwards(Flv(), 1000); }, "", 0, Frames(1, 1)},

      // Streams that fail under the reader. The reader takes 256 KiB at a time, so the
      // seek faults use the 1080p clip, which is larger: its seeks reach the stream.
      {"mp4 index first, reads fail from byte 0", [] { return Fast(); }, "readfail", 0, NoReader()},
      {"mp4 index first, reads fail from 1%", [] { return Fast(); }, "readfail", 0.01, NoReader()},
      {"mp4 index first, reads fail from 50%", [] { return Fast(); }, "readfail", 0.5, EndsEarly(1, 1)},
      {"mp4 index first, reads fail from 95%", [] { return Fast(); }, "readfail", 0.95, EndsEarly(1, 1)},
      {"mp4 index last, reads fail from 50%", [] { return Movie(); }, "readfail", 0.5, NoReader()},
      {"1080p mp4 index last, seeks never land", [] { return Big(); }, "seeklost", 0, EndOfStream(1, 0)},
      {"1080p mp4 index last, seeks fail", [] { return Big(); }, "seekfail", 0, EndOfStream(1, 0)},
      {"1080p mp4 index first, seeks never land", [] { return BigFast(); }, "seeklost", 0, Frames(1, 0)},
      {"1080p mp4 index first, seeks fail", [] { return BigFast(); }, "seekfail", 0, Frames(1, 0)},
      {"mp4 index first, length said to be half", [] { return Fast(); }, "length", 0.5, Frames(1, 1)},
      {"mp4 index first, length said to be double", [] { return Fast(); }, "length", 2, Frames(1, 1)},
      {"mp4 index last, length said to be 0", [] { return Movie(); }, "length", 0, NoReader()},
  };
  return cases;
}

}  // namespace tessel::damaged
