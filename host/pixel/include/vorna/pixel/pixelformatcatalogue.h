// Every pixel format the host publishes, grouped as they are declared.
#pragma once

#include <span>
#include <string_view>

#include "vorna/pixel/pixelformat.h"

namespace vorna::pixel {

inline constexpr std::string_view kPixelFormatGroupRegistry = "vorna.PixelFormats";

// A group is published as `vorna.PixelFormats:<member>` and lists the formats of its own
// registry, `vorna.PixelFormats.<GROUP>`.
struct PixelFormatGroup {
  std::string_view id;
  std::string_view member;
  std::string_view registry;
  std::span<const PixelFormat> formats;
};

// The 20 groups in declaration order, each with its formats in declaration order.
std::span<const PixelFormatGroup> PixelFormatGroups();

// All formats, group after group, in the same order.
std::span<const PixelFormat> PixelFormats();

// Look-ups by the full published id, compared exactly: `vorna.PixelFormats.BGR:u8` finds
// a format, `vorna.PixelFormats:bgr` a group, and neither finds the other. Null if absent.
// The entries live for the whole program.
const PixelFormat* FindPixelFormat(std::string_view id);
const PixelFormatGroup* FindPixelFormatGroup(std::string_view id);

}  // namespace vorna::pixel
