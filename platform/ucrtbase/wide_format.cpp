// __stdio_common_vswprintf_s: printf-style formatting into UTF-16 text, for the
// conversions the platform's own texts need.
#include <cstdint>

#include "corecrt_wstdio.h"

namespace {

struct Directive {
  bool leftAlign = false;
  bool zeroPad = false;
  int width = 0;
  int size = 0;  // 0 int, 1 long, 2 64-bit
  char16_t conversion = 0;
};

class Output {
 public:
  Output(WCHAR* buffer, size_t count) : buffer_(buffer), count_(count) {}
  void Put(char16_t c) {
    if (length_ + 1 < count_) buffer_[length_] = c;
    ++length_;
  }
  bool Fits() const { return length_ + 1 <= count_; }
  int Finish() {
    if (!Fits()) {
      buffer_[0] = 0;
      return -1;
    }
    buffer_[length_] = 0;
    return static_cast<int>(length_);
  }

 private:
  WCHAR* buffer_;
  size_t count_;
  size_t length_ = 0;
};

// Reads flags, width and size prefix after '%'; leaves format at the conversion.
Directive ParseDirective(const WCHAR*& format) {
  Directive directive;
  for (;; ++format) {
    if (*format == u'-') directive.leftAlign = true;
    else if (*format == u'0') directive.zeroPad = true;
    else break;
  }
  while (*format >= u'0' && *format <= u'9') directive.width = directive.width * 10 + (*format++ - u'0');
  if (format[0] == u'I' && format[1] == u'6' && format[2] == u'4') {
    directive.size = 2;
    format += 3;
  } else if (format[0] == u'l' && format[1] == u'l') {
    directive.size = 2;
    format += 2;
  } else if (*format == u'l') {
    directive.size = 1;
    ++format;
  }
  directive.conversion = *format;
  return directive;
}

void PutPadded(Output& out, const Directive& directive, const char16_t* digits, int length, bool negative) {
  int total = length + (negative ? 1 : 0);
  int padding = directive.width > total ? directive.width - total : 0;
  if (!directive.leftAlign && !directive.zeroPad) for (int i = 0; i < padding; ++i) out.Put(u' ');
  if (negative) out.Put(u'-');
  if (!directive.leftAlign && directive.zeroPad) for (int i = 0; i < padding; ++i) out.Put(u'0');
  for (int i = 0; i < length; ++i) out.Put(digits[i]);
  if (directive.leftAlign) for (int i = 0; i < padding; ++i) out.Put(u' ');
}

void PutNumber(Output& out, const Directive& directive, uint64_t magnitude, bool negative, unsigned base, bool upper) {
  const char16_t* symbols = upper ? u"0123456789ABCDEF" : u"0123456789abcdef";
  char16_t reversed[24];
  int length = 0;
  do {
    reversed[length++] = symbols[magnitude % base];
    magnitude /= base;
  } while (magnitude != 0);
  char16_t digits[24];
  for (int i = 0; i < length; ++i) digits[i] = reversed[length - 1 - i];
  PutPadded(out, directive, digits, length, negative);
}

void PutSigned(Output& out, const Directive& directive, va_list& args) {
  int64_t value = directive.size == 2 ? va_arg(args, long long) : directive.size == 1 ? va_arg(args, long) : va_arg(args, int);
  uint64_t magnitude = value < 0 ? 0 - static_cast<uint64_t>(value) : static_cast<uint64_t>(value);
  PutNumber(out, directive, magnitude, value < 0, 10, false);
}

// The Windows long is 32 bits: %lX reads a 32-bit value.
void PutUnsigned(Output& out, const Directive& directive, va_list& args, unsigned base, bool upper) {
  uint64_t value = directive.size == 2 ? va_arg(args, unsigned long long)
                   : directive.size == 1 ? static_cast<uint32_t>(va_arg(args, unsigned long))
                                    : va_arg(args, unsigned int);
  PutNumber(out, directive, value, false, base, upper);
}

void PutString(Output& out, const Directive& directive, va_list& args) {
  const WCHAR* text = va_arg(args, const WCHAR*);
  if (!text) text = u"(null)";
  int length = 0;
  while (text[length] != 0) ++length;
  Directive plain = directive;
  plain.zeroPad = false;
  PutPadded(out, plain, text, length, false);
}

}  // namespace

extern "C" int __stdio_common_vswprintf_s(uint64_t /*options*/, WCHAR* buffer, size_t count, const WCHAR* format,
                                          _locale_t /*locale*/, va_list args) {
  if (!buffer || count == 0 || !format) return -1;
  Output out(buffer, count);
  va_list ap;
  va_copy(ap, args);
  for (; *format != 0; ++format) {
    if (*format != u'%') {
      out.Put(*format);
      continue;
    }
    ++format;
    Directive directive = ParseDirective(format);
    switch (directive.conversion) {
      case u'd':
      case u'i': PutSigned(out, directive, ap); break;
      case u'u': PutUnsigned(out, directive, ap, 10, false); break;
      case u'x': PutUnsigned(out, directive, ap, 16, false); break;
      case u'X': PutUnsigned(out, directive, ap, 16, true); break;
      case u's': PutString(out, directive, ap); break;
      case u'%': out.Put(u'%'); break;
      default:
        va_end(ap);
        buffer[0] = 0;
        return -1;
    }
  }
  va_end(ap);
  return out.Finish();
}
