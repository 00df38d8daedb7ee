#include "types/text_codec.h"

namespace vorna::host {

namespace {

constexpr Utf32Char REPLACEMENT = 0xFFFD;

// Length of the UTF-8 sequence that starts with byte, 0 if it cannot start one.
Int SequenceLength(UChar byte) {
  if (byte < 0x80) return 1;
  if (byte >= 0xC2 && byte < 0xE0) return 2;
  if (byte >= 0xE0 && byte < 0xF0) return 3;
  if (byte >= 0xF0 && byte < 0xF5) return 4;
  return 0;
}

// The code point of a sequence of n bytes; false when it is ill-formed.
Bool DecodeSequence(const UChar* p, Int n, Utf32Char& c) {
  static constexpr UChar LEAD_MASK[] = {0, 0x7F, 0x1F, 0x0F, 0x07};
  c = p[0] & LEAD_MASK[n];
  for (Int i = 1; i < n; ++i) {
    if ((p[i] & 0xC0) != 0x80) return false;
    c = (c << 6) | (p[i] & 0x3F);
  }
  static constexpr Utf32Char MINIMUM[] = {0, 0, 0x80, 0x800, 0x10000};
  return c >= MINIMUM[n] && c <= 0x10FFFF && !(c >= 0xD800 && c < 0xE000);
}

}  // namespace

Bool DecodeUtf8(const Char* text, Int length, BaseArray<Utf32Char>& out) {
  const auto* p = reinterpret_cast<const UChar*>(text);
  for (Int i = 0; i < length;) {
    // An ill-formed sequence costs its lead byte only, so what follows is not lost.
    Int n = SequenceLength(p[i]);
    Utf32Char c = REPLACEMENT;
    if (n == 0 || i + n > length || !DecodeSequence(p + i, n, c)) {
      c = REPLACEMENT;
      n = 1;
    }
    if (!out.Append(c)) return false;
    i += n;
  }
  return true;
}

Bool DecodeUtf16(const Utf16Char* text, Int length, BaseArray<Utf32Char>& out) {
  for (Int i = 0; i < length; ++i) {
    Utf32Char c = text[i];
    if (c >= 0xD800 && c < 0xDC00 && i + 1 < length && text[i + 1] >= 0xDC00 && text[i + 1] < 0xE000) {
      c = 0x10000 + ((c - 0xD800) << 10) + (text[i + 1] - 0xDC00);
      ++i;
    } else if (c >= 0xD800 && c < 0xE000) {
      c = REPLACEMENT;
    }
    if (!out.Append(c)) return false;
  }
  return true;
}

Bool EncodeUtf8(const Utf32Char* text, Int length, BaseArray<Char>& out) {
  for (Int i = 0; i < length; ++i) {
    Utf32Char c = text[i];
    Char bytes[4];
    Int n;
    if (c < 0x80) {
      bytes[0] = Char(c), n = 1;
    } else if (c < 0x800) {
      bytes[0] = Char(0xC0 | (c >> 6)), bytes[1] = Char(0x80 | (c & 0x3F)), n = 2;
    } else if (c < 0x10000) {
      bytes[0] = Char(0xE0 | (c >> 12)), bytes[1] = Char(0x80 | ((c >> 6) & 0x3F)), bytes[2] = Char(0x80 | (c & 0x3F)), n = 3;
    } else {
      bytes[0] = Char(0xF0 | (c >> 18)), bytes[1] = Char(0x80 | ((c >> 12) & 0x3F));
      bytes[2] = Char(0x80 | ((c >> 6) & 0x3F)), bytes[3] = Char(0x80 | (c & 0x3F)), n = 4;
    }
    if (!out.Append(bytes, n)) return false;
  }
  return true;
}

Bool EncodeUtf16(const Utf32Char* text, Int length, BaseArray<Utf16Char>& out) {
  for (Int i = 0; i < length; ++i) {
    Utf32Char c = text[i];
    if (c < 0x10000) {
      if (!out.Append(Utf16Char(c))) return false;
    } else {
      Utf16Char pair[2] = {Utf16Char(0xD800 + ((c - 0x10000) >> 10)), Utf16Char(0xDC00 + ((c - 0x10000) & 0x3FF))};
      if (!out.Append(pair, 2)) return false;
    }
  }
  return true;
}

}  // namespace vorna::host
