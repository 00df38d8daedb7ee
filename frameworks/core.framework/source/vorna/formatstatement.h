// FormatStatement: what stands between the braces of a placeholder, as a map from a key
// to a CString. The value under the empty key is the number format ("x", ".1",
// "2'0'.0"). Keys are looked up as C strings hashed with the multiplier of Id; a null
// key counts as the empty one.
//
// The host makes one for each placeholder that has braces and gives it to the
// placeholder's converter, which reads it through StringConversion::GetStatementValue;
// the client layer makes its own to hand a number format to the host's conversions.
// Owned by whoever made it; used by one thread at a time.
#pragma once

#include "vorna/hashmap.h"

namespace vorna {

class FormatStatement {
 public:
  // Sets the value under key to length bytes of text (-1: up to the NUL); false when
  // out of memory.
  Bool Set(const Char* key, const Char* text, Int length = -1);

  // The value under key, or null.
  const CString* Get(const Char* key) const;

 private:
  HashMap<CString, CString> _values;
};

}  // namespace vorna
