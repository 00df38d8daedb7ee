// String and CString: copy-on-write references to host strings (vorna.StringInterface#1,
// vorna.CStringInterface#1). The module never sees inside; a null reference reads as the
// empty string. The last reference goes to the first method of the interface, its free
// operation. Before a write the block is made private: a null reference asks the
// interface for a new block, a shared one for a clone.
#pragma once

#include "vorna/basearray.h"
#include "vorna/cowblockref.h"

namespace vorna {

class CString;

class StringInterface {
 public:
  static constexpr const Char* ID = "vorna.StringInterface#1";
  static constexpr Int COUNT = 45;
  using Reserved = void (*)();
  struct Table {
    void (*Free)(void* block);
    void* (*Alloc)(const SourceLocation& location);
    void* (*Clone)(const void* block, const SourceLocation& location);
    const void* (*FromLiteral)(const Char* text, Int length, Int encoding);
    Result<void> (*SetCString)(void* block, const Char* text, Int length, const void* decoding);
    Result<void> (*SetUtf16)(void* block, const Utf16Char* text, Int length);
    Result<BaseArray<Utf16Char>> (*GetUtf16)(const void* block);
    Bool (*Append)(void* block, const void* other);
    Result<void*> (*GetCString)(const void* block, const void* encoding);
    Int (*GetLength)(const void* block);
    Int (*Compare)(const void* a, const void* b);
    Bool (*AppendCString)(void* block, const Char* text, Int length);
    Reserved reserved[33];
  };
  static constexpr UChar RETURN_CLASSES[COUNT] = {1, 2, 2, 2, 5, 5, 5, 2, 5, 2, 2, 2};
  static Table _table;
  static StaticInterfaceRecord _record;
};

class CStringInterface {
 public:
  static constexpr const Char* ID = "vorna.CStringInterface#1";
  static constexpr Int COUNT = 37;
  using Reserved = void (*)();
  struct Table {
    void (*Free)(void* block);
    void* (*Alloc)(const SourceLocation& location);
    void* (*Clone)(const void* block, const SourceLocation& location);
    Bool (*Set)(void* block, const Char* text, Int length);
    const Char* (*GetPointer)(const void* block);
    Int (*GetLength)(const void* block);
    Bool (*Erase)(void* block, Int start, Int count);
    Reserved reserved[30];
  };
  static constexpr UChar RETURN_CLASSES[COUNT] = {1, 2, 2, 2, 2, 2, 2};
  static Table _table;
  static StaticInterfaceRecord _record;
};

class String : public COWBlockRef<StringInterface> {
 public:
  String() = default;

  // A String of a literal that stays valid for the whole run.
  static String FromLiteral(const Char* text);

  // Sets the text from bytes; length -1 reads up to the NUL. Without a decoding the
  // bytes are UTF-8.
  Result<void> SetCString(const Char* text, Int length = -1, const void* decoding = nullptr);
  Result<void> SetUtf16(const Utf16Char* text, Int length = -1);
  // A zero-terminated copy in UTF-16.
  Result<BaseArray<Utf16Char>> GetUtf16() const;
  // The text as bytes in the given encoding (UTF-8 without one).
  Result<CString> GetCString(const void* encoding = nullptr) const;
  Bool Append(const String& other);
  Bool AppendCString(const Char* text, Int length = -1);
  Int GetLength() const { return _block ? StringInterface::_table.GetLength(_block) : 0; }
  Bool operator==(const String& other) const;
};

class CString : public COWBlockRef<CStringInterface> {
 public:
  CString() = default;
  Bool Set(const Char* text, Int length = -1);
  const Char* GetCString() const { return _block ? CStringInterface::_table.GetPointer(_block) : ""; }
  Int GetLength() const { return _block ? CStringInterface::_table.GetLength(_block) : 0; }
  Bool Erase(Int start, Int count);
};

}  // namespace vorna
