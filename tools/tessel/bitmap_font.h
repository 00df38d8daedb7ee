// A tiny built-in bitmap font for labels on pictures: 5x7 glyphs of the digits and
// ": . - s", each drawn as blocks of scale x scale pixels. Other characters draw as
// blanks.
#pragma once

#include <string_view>

#include "rgba_image.h"

namespace tessel::cli {

inline constexpr int GLYPH_WIDTH = 5;
inline constexpr int GLYPH_HEIGHT = 7;

// Width in pixels of text drawn at scale, one blank column between glyphs.
int64_t TextWidth(std::string_view text, int scale);
// Draws text with its top left corner at (x, y), clipped to the picture.
void DrawText(RgbaImage& image, int64_t x, int64_t y, std::string_view text, int scale, Rgba color);

}  // namespace tessel::cli
