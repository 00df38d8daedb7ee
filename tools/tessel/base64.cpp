#include "base64.h"

#include <cstdint>

namespace tessel::cli {

namespace {

constexpr char ALPHABET[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

// The six bits a character stands for, or -1.
int SextetOf(char c) {
  if (c >= 'A' && c <= 'Z') return c - 'A';
  if (c >= 'a' && c <= 'z') return c - 'a' + 26;
  if (c >= '0' && c <= '9') return c - '0' + 52;
  if (c == '+') return 62;
  if (c == '/') return 63;
  return -1;
}

}  // namespace

std::string Base64Encode(std::string_view bytes) {
  std::string text;
  text.reserve((bytes.size() + 2) / 3 * 4);
  for (size_t i = 0; i < bytes.size(); i += 3) {
    size_t count = std::min<size_t>(3, bytes.size() - i);
    uint32_t group = 0;
    for (size_t j = 0; j < 3; ++j) group = group << 8 | (j < count ? uint8_t(bytes[i + j]) : 0);
    for (size_t j = 0; j < 4; ++j) text += j <= count ? ALPHABET[(group >> (18 - 6 * j)) & 63] : '=';
  }
  return text;
}

bool Base64Decode(std::string_view text, std::string& bytes) {
  if (text.size() % 4 != 0) return false;
  std::string decoded;
  decoded.reserve(text.size() / 4 * 3);
  for (size_t i = 0; i < text.size(); i += 4) {
    bool last = i + 4 == text.size();
    size_t padding = last ? (text[i + 3] == '=') + (text[i + 2] == '=' && text[i + 3] == '=') : 0;
    uint32_t group = 0;
    for (size_t j = 0; j < 4; ++j) {
      int sextet = j < 4 - padding ? SextetOf(text[i + j]) : 0;
      if (sextet < 0) return false;
      group = group << 6 | uint32_t(sextet);
    }
    size_t count = 3 - padding;
    if (padding && (group & ((1u << (8 * padding)) - 1)) != 0) return false;
    for (size_t j = 0; j < count; ++j) decoded += char((group >> (16 - 8 * j)) & 0xFF);
  }
  bytes = std::move(decoded);
  return true;
}

}  // namespace tessel::cli
