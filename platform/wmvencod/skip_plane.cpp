#include "wmvencod/skip_plane.h"

#include <algorithm>

namespace tessel::platform::wmv3 {
namespace {

// Bitplane coding modes and their IMODE codes.
enum class Mode { kRaw, kNorm2, kRowSkip, kColumnSkip };
constexpr VlcCode kModeCodes[] = {{0, 4}, {2, 2}, {2, 3}, {3, 3}};
// Norm-2 pairs by (first | second << 1).
constexpr VlcCode kPairCodes[4] = {{0, 1}, {4, 3}, {5, 3}, {3, 2}};

// One plane being coded: the flags, inverted or not.
class FlagPlane {
 public:
  FlagPlane(const std::vector<uint8_t>& flags, int width, int height, bool invert)
      : flags_(flags), width_(width), height_(height), invert_(invert) {}

  bool At(int x, int y) const { return (flags_[static_cast<size_t>(y) * width_ + x] != 0) != invert_; }
  bool AtIndex(int i) const { return (flags_[static_cast<size_t>(i)] != 0) != invert_; }

  // Row-skip and column-skip: per line a bit whether any flag is set, then its flags.
  template <typename FlagAt, typename Put>
  static void CodeLines(int lines, int length, FlagAt at, Put& put) {
    for (int line = 0; line < lines; ++line) {
      bool any = false;
      for (int i = 0; i < length; ++i) any |= at(line, i);
      put(any, 1);
      if (any)
        for (int i = 0; i < length; ++i) put(at(line, i), 1);
    }
  }

  // Writes the plane in mode (not raw) to writer, or only counts when writer is null.
  int Code(Mode mode, BitWriter* writer) const {
    int bits = 0;
    auto put = [&](uint32_t value, int count) {
      bits += count;
      if (writer) writer->Put(value, count);
    };
    int count = width_ * height_;
    switch (mode) {
      case Mode::kNorm2: {
        int i = 0;
        if (count & 1) put(AtIndex(i++), 1);
        for (; i < count; i += 2) {
          const VlcCode& pair = kPairCodes[AtIndex(i) | AtIndex(i + 1) << 1];
          put(pair.code, pair.length);
        }
        break;
      }
      case Mode::kRowSkip:
        CodeLines(
            height_, width_, [&](int line, int i) { return At(i, line); }, put);
        break;
      case Mode::kColumnSkip:
        CodeLines(
            width_, height_, [&](int line, int i) { return At(line, i); }, put);
        break;
      case Mode::kRaw:
        break;
    }
    return bits;
  }

 private:
  const std::vector<uint8_t>& flags_;
  int width_;
  int height_;
  bool invert_;
};

}  // namespace

bool WriteSkipPlane(BitWriter& writer, const std::vector<uint8_t>& flags, int width, int height) {
  Mode bestMode = Mode::kRaw;
  bool bestInvert = false;
  int bestBits = width * height;  // raw: a bit in each macroblock
  for (bool invert : {false, true}) {
    FlagPlane plane(flags, width, height, invert);
    for (Mode mode : {Mode::kNorm2, Mode::kRowSkip, Mode::kColumnSkip}) {
      int bits = plane.Code(mode, nullptr) + kModeCodes[static_cast<int>(mode)].length - kModeCodes[0].length;
      if (bits < bestBits) {
        bestBits = bits;
        bestMode = mode;
        bestInvert = invert;
      }
    }
  }
  writer.PutBit(bestInvert);
  writer.Put(kModeCodes[static_cast<int>(bestMode)]);
  if (bestMode == Mode::kRaw) return true;
  FlagPlane(flags, width, height, bestInvert).Code(bestMode, &writer);
  return false;
}

}  // namespace tessel::platform::wmv3
