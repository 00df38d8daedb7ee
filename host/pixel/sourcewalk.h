// Where the pixels of a source row lie.
#pragma once

#include <cstdint>

namespace vorna::pixel {

// Pixels side by side, `Bytes` apart: a row read forwards.
template <int Bytes>
struct ForwardWalk {
  static constexpr int64_t Offset(int64_t i) { return i * Bytes; }
};

// Any signed step in bits, e.g. backwards or down a column; offsets round down to bytes.
struct SteppedWalk {
  int64_t stepBits;

  constexpr int64_t Offset(int64_t i) const { return (i * stepBits) >> 3; }
};

}  // namespace vorna::pixel
