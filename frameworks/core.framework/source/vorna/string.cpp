#include "vorna/translationunit.h"

#include "vorna/string.h"

#include <cstring>

#include "vorna/stringencoding.h"

namespace vorna {

VORNA_DEFINE_STATIC_INTERFACE(StringInterface, nullptr, &StringInterface::Table::SetCString,
                              &StringInterface::Table::SetUtf16, &StringInterface::Table::GetUtf16,
                              &StringInterface::Table::GetCString);
VORNA_DEFINE_STATIC_INTERFACE(CStringInterface, nullptr);

String String::FromLiteral(const Char* text) {
  String result;
  const void* block = StringInterface::_table.FromLiteral(text, Int(std::strlen(text)), -1);
  if (block) {
    RefCounter::AddReference(block);
    result._block = const_cast<void*>(block);
  }
  return result;
}

Result<void> String::SetCString(const Char* text, Int length, const void* decoding) {
  void* block = MakeWritable();
  if (!block) return ErrorResult{PrivateGetNullReturnError(1)};
  if (!decoding) decoding = GetUtf8DefaultDecoder().GetPointer();
  return StringInterface::_table.SetCString(block, text, length, decoding);
}

Result<void> String::SetUtf16(const Utf16Char* text, Int length) {
  void* block = MakeWritable();
  if (!block) return ErrorResult{PrivateGetNullReturnError(1)};
  return StringInterface::_table.SetUtf16(block, text, length);
}

Result<BaseArray<Utf16Char>> String::GetUtf16() const {
  if (_block) return StringInterface::_table.GetUtf16(_block);
  BaseArray<Utf16Char> empty;
  if (!empty.Append(Utf16Char(0))) return ErrorResult{PrivateGetNullReturnError(1)};
  return empty;
}

Result<CString> String::GetCString(const void* encoding) const {
  CString result;
  if (!_block) return result;
  Result<void*> block = StringInterface::_table.GetCString(_block, encoding);
  if (block.IsError()) return block.GetErrorResult();
  result.Adopt(block.GetValue());
  return result;
}

Bool String::Append(const String& other) {
  if (!other._block) return true;
  void* block = MakeWritable();
  return block && StringInterface::_table.Append(block, other._block);
}

Bool String::AppendCString(const Char* text, Int length) {
  void* block = MakeWritable();
  return block && StringInterface::_table.AppendCString(block, text, length < 0 ? Int(std::strlen(text)) : length);
}

Bool String::operator==(const String& other) const {
  if (_block == other._block) return true;
  const void* a = _block ? _block : other._block;
  const void* b = _block ? other._block : nullptr;
  if (!b) return StringInterface::_table.GetLength(a) == 0;
  return StringInterface::_table.Compare(a, b) == 0;
}

Bool CString::Set(const Char* text, Int length) {
  void* block = MakeWritable();
  return block && CStringInterface::_table.Set(block, text, length < 0 ? Int(std::strlen(text)) : length);
}

Bool CString::Erase(Int start, Int count) {
  void* block = MakeWritable();
  return block && CStringInterface::_table.Erase(block, start, count);
}

}  // namespace vorna
