// The bytes of damaged inputs, each made from a generated clip: cut, patched, covered
// with noise, remuxed into another container, or its timestamps turned backwards.
// Offsets into a file are found by the tags of its container (an MP4 box, a RIFF chunk,
// an ID3 header), so a case keeps hitting the same field when the clips change.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tessel::damaged {

using Bytes = std::vector<uint8_t>;

// A generated clip of the fixture directory.
Bytes Clip(const std::string& name);
// A generated clip remuxed by libavformat into format ("avi", "flv", "mp4"…); muxer
// options as "key=value" (movflags=+faststart), or empty.
Bytes Remuxed(const std::string& clip, const std::string& format, const std::string& option = "");

// The first fraction of bytes, cut at a whole byte.
Bytes CutAt(Bytes bytes, double fraction);
// Bytes with the first count bytes kept and the rest replaced by noise.
Bytes GarbageAfter(Bytes bytes, size_t count, uint32_t seed);
// count bytes of noise; the same seed gives the same bytes.
Bytes Noise(size_t count, uint32_t seed);
Bytes Text(const std::string& text);

// Where the n-th (from 0) occurrence of the four-character tag starts; aborts the test
// program when there is none, as the case would test nothing.
size_t FindTag(const Bytes& bytes, const char* tag, int n = 0);
// Writes value at offset, most significant byte first (MP4, ID3) or last (RIFF).
Bytes WithBigEndian(Bytes bytes, size_t offset, uint64_t value, int size);
Bytes WithLittleEndian(Bytes bytes, size_t offset, uint64_t value, int size);

// An FLV file whose tags of the second half carry timestamps that run backwards: each
// is stamped step milliseconds before the tag of its type before it, down to 0.
Bytes FlvTimestampsBackwards(Bytes flv, int step);

}  // namespace tessel::damaged
