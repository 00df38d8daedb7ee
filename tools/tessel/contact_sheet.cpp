#include "contact_sheet.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "bitmap_font.h"

namespace tessel::cli {

namespace {

constexpr int64_t MARGIN = 8;
constexpr int LABEL_SCALE = 2;
constexpr int64_t LABEL_HEIGHT = GLYPH_HEIGHT * LABEL_SCALE + 6;
constexpr Rgba GROUND{32, 32, 32, 255};
constexpr Rgba INK{235, 235, 235, 255};

int64_t CellHeight(const std::vector<SheetCell>& cells, int64_t cellWidth) {
  const RgbaImage& first = cells.front().picture;
  if (first.width <= 0 || first.height <= 0) return cellWidth;
  return std::max<int64_t>(1, (cellWidth * first.height + first.width / 2) / first.width);
}

}  // namespace

RgbaImage ComposeSheet(const std::vector<SheetCell>& cells, int64_t columns, int64_t cellWidth) {
  if (cells.empty() || columns < 1 || cellWidth < 1) return RgbaImage();
  columns = std::min<int64_t>(columns, int64_t(cells.size()));
  int64_t rows = (int64_t(cells.size()) + columns - 1) / columns;
  int64_t cellHeight = CellHeight(cells, cellWidth);
  int64_t stepX = cellWidth + MARGIN;
  int64_t stepY = cellHeight + LABEL_HEIGHT + MARGIN;
  RgbaImage sheet(MARGIN + columns * stepX, MARGIN + rows * stepY, GROUND);
  for (size_t i = 0; i < cells.size(); ++i) {
    int64_t x = MARGIN + int64_t(i) % columns * stepX;
    int64_t y = MARGIN + int64_t(i) / columns * stepY;
    Paste(sheet, Scale(cells[i].picture, cellWidth, cellHeight), x, y);
    int64_t textX = x + (cellWidth - TextWidth(cells[i].label, LABEL_SCALE)) / 2;
    DrawText(sheet, std::max(x, textX), y + cellHeight + 4, cells[i].label, LABEL_SCALE, INK);
  }
  return sheet;
}

std::string ClockLabel(double seconds) {
  double rounded = std::round(std::max(0.0, seconds) * 100) / 100;
  long long minutes = (long long)(rounded / 60);
  char text[40];
  std::snprintf(text, sizeof text, "%lld:%05.2f", minutes, rounded - double(minutes) * 60);
  return text;
}

}  // namespace tessel::cli
