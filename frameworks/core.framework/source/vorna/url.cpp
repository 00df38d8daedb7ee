#include "vorna/translationunit.h"

#include "vorna/url.h"

#include <cstring>

namespace vorna {

VORNA_DEFINE_STATIC_INTERFACE(UrlInterface, nullptr, &UrlInterface::Table::Set, &UrlInterface::Table::GetScheme,
                              &UrlInterface::Table::GetPath, &UrlInterface::Table::GetSystemPath,
                              &UrlInterface::Table::ToString, &UrlInterface::Table::GetName,
                              &UrlInterface::Table::GetSuffix);

Result<void> Url::Set(const Char* text, Int length) {
  void* block = MakeWritable();
  if (!block) return ErrorResult{PrivateGetNullReturnError(1)};
  return UrlInterface::_table.Set(block, text, length < 0 ? Int(std::strlen(text)) : length);
}

Result<void> Url::Set(const String& text) {
  VORNA_ASSIGN_OR_RETURN(CString bytes, text.GetCString());
  return Set(bytes.GetCString(), bytes.GetLength());
}

Bool Url::SetSuffix(const Char* suffix) {
  void* block = MakeWritable();
  return block && UrlInterface::_table.SetSuffix(block, suffix);
}

Url Url::GetDirectory() const {
  Url directory;
  void* block = directory.MakeWritable();
  if (!block || !UrlInterface::_table.SetDirectoryOf(block, _block)) return Url();
  return directory;
}

Bool Url::Append(const Char* name, Int length) {
  void* block = MakeWritable();
  return block && UrlInterface::_table.Append(block, name, length < 0 ? Int(std::strlen(name)) : length);
}

Bool Url::Append(const String& name) {
  Result<CString> bytes = name.GetCString();
  return !bytes.IsError() && Append(bytes.GetValue().GetCString(), bytes.GetValue().GetLength());
}

}  // namespace vorna
