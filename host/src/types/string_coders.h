// The published string encodings and decodings, and the kind of coder an object is.
#pragma once

#include "vorna/apibase.h"

namespace vorna::host {

enum class CoderKind {
  SYSTEM_CODE_PAGE,
  BIT8,
  HEX7,
  UTF8,
  UTF16,
  URL,
  URL32,
  URL_PATH,
  URL_QUERY,
  CODEPAGE437,
};

// Publishes one encoding and one decoding of every kind.
void PublishStringCoders();

// The kind of the coder object, UTF-8 for none.
CoderKind KindOfCoder(const void* coder);
const Char* NameOfCoder(CoderKind kind);

}  // namespace vorna::host
