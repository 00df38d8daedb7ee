// A contact sheet: pictures in rows, each scaled to one cell size and labelled below
// with a text in the built-in bitmap font, on a dark ground.
#pragma once

#include <string>
#include <vector>

#include "rgba_image.h"

namespace tessel::cli {

struct SheetCell {
  RgbaImage picture;
  std::string label;
};

// Cells are cellWidth wide and as high as the first picture's proportions make them;
// every picture is scaled to that size.
RgbaImage ComposeSheet(const std::vector<SheetCell>& cells, int64_t columns, int64_t cellWidth);

// A time as minutes, seconds and hundredths: "1:05.20".
std::string ClockLabel(double seconds);

}  // namespace tessel::cli
