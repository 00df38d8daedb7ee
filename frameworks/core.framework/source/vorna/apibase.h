// Basic types of the vorna client layer, the source location that every allocation
// and every error carries, and the export marker of the shared objects.
#pragma once

#include <cstddef>
#include <cstdint>

#define VORNA_EXPORT __attribute__((visibility("default")))

namespace vorna {

using Bool = bool;
using Char = char;
using UChar = unsigned char;
using Int16 = int16_t;
using UInt16 = uint16_t;
using Int32 = int32_t;
using UInt32 = uint32_t;
using Int64 = int64_t;
using UInt64 = uint64_t;
using Int = int64_t;
using UInt = uint64_t;
using Float32 = float;
using Float64 = double;
using Float = double;
using Utf16Char = char16_t;
using Utf32Char = char32_t;

inline constexpr Int MAXVALUE_INT = INT64_MAX;
inline constexpr Int MINVALUE_INT = INT64_MIN;

// Where something happened: file, line and a word that is 0 in this code base.
struct SourceLocation {
  const Char* file;
  Int line;
  Int reserved;
};

#define VORNA_SOURCE_LOCATION (::vorna::SourceLocation{__FILE__, __LINE__, 0})

}  // namespace vorna
