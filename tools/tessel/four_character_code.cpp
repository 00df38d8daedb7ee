#include "four_character_code.h"

#include <cstdio>

namespace tessel::cli {

namespace {

bool Printable(uint32_t c) { return c >= 0x20 && c < 0x7F; }

}  // namespace

std::string FourCharacterText(uint32_t code) {
  std::string text;
  for (int shift = 0; shift < 32; shift += 8) {
    uint32_t c = (code >> shift) & 0xFF;
    if (!Printable(c)) {
      char hex[16];
      std::snprintf(hex, sizeof hex, "0x%08x", code);
      return hex;
    }
    text += char(c);
  }
  while (!text.empty() && text.back() == ' ') text.pop_back();
  return text;
}

bool ParseFourCharacterCode(const std::string& text, uint32_t& code) {
  if (text.empty() || text.size() > 4) return false;
  uint32_t parsed = 0;
  for (size_t i = 0; i < 4; ++i) {
    uint32_t c = i < text.size() ? uint8_t(text[i]) : ' ';
    if (!Printable(c)) return false;
    parsed |= c << (8 * i);
  }
  code = parsed;
  return true;
}

}  // namespace tessel::cli
