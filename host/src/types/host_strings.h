// The blocks behind String and CString: code points and bytes, each with the counter
// in front like every counted block.
#pragma once

#include "vorna/basearray.h"

namespace vorna::host {

struct StringBlock {
  BaseArray<Utf32Char> chars;
};

struct CStringBlock {
  BaseArray<Char> bytes;  // with a NUL behind the last byte once anything was set
};

inline StringBlock* AsString(void* block) { return static_cast<StringBlock*>(block); }
inline const StringBlock* AsString(const void* block) { return static_cast<const StringBlock*>(block); }

// A new CString block holding text; null when out of memory.
void* NewCStringBlock(const Char* text, Int length);

void ReleaseLiteralStrings();

}  // namespace vorna::host
