#include "bitmap_font.h"

#include <cstring>

namespace tessel::cli {

namespace {

struct Glyph {
  char character;
  const char* rows[GLYPH_HEIGHT];
};

constexpr Glyph GLYPHS[] = {
    {'0', {".###.", "#...#", "#..##", "#.#.#", "##..#", "#...#", ".###."}},
    {'1', {"..#..", ".##..", "..#..", "..#..", "..#..", "..#..", ".###."}},
    {'2', {".###.", "#...#", "....#", "...#.", "..#..", ".#...", "#####"}},
    {'3', {"#####", "...#.", "..#..", "...#.", "....#", "#...#", ".###."}},
    {'4', {"...#.", "..##.", ".#.#.", "#..#.", "#####", "...#.", "...#."}},
    {'5', {"#####", "#....", "####.", "....#", "....#", "#...#", ".###."}},
    {'6', {"..##.", ".#...", "#....", "####.", "#...#", "#...#", ".###."}},
    {'7', {"#####", "....#", "...#.", "..#..", ".#...", ".#...", ".#..."}},
    {'8', {".###.", "#...#", "#...#", ".###.", "#...#", "#...#", ".###."}},
    {'9', {".###.", "#...#", "#...#", ".####", "....#", "...#.", ".##.."}},
    {':', {".....", "..#..", "..#..", ".....", "..#..", "..#..", "....."}},
    {'.', {".....", ".....", ".....", ".....", ".....", ".##..", ".##.."}},
    {'-', {".....", ".....", ".....", "#####", ".....", ".....", "....."}},
    {'s', {".....", ".....", ".####", "#....", ".###.", "....#", "####."}},
};

const Glyph* FindGlyph(char c) {
  for (const Glyph& glyph : GLYPHS)
    if (glyph.character == c) return &glyph;
  return nullptr;
}

}  // namespace

int64_t TextWidth(std::string_view text, int scale) {
  if (text.empty()) return 0;
  return int64_t(text.size()) * (GLYPH_WIDTH + 1) * scale - scale;
}

void DrawText(RgbaImage& image, int64_t x, int64_t y, std::string_view text, int scale, Rgba color) {
  for (char c : text) {
    if (const Glyph* glyph = FindGlyph(c)) {
      for (int row = 0; row < GLYPH_HEIGHT; ++row)
        for (int column = 0; column < GLYPH_WIDTH; ++column)
          if (glyph->rows[row][column] == '#')
            FillRect(image, x + column * scale, y + row * scale, scale, scale, color);
    }
    x += (GLYPH_WIDTH + 1) * scale;
  }
}

}  // namespace tessel::cli
