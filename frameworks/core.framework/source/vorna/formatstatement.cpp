#include "vorna/formatstatement.h"

namespace vorna {

Bool FormatStatement::Set(const Char* key, const Char* text, Int length) {
  CString name;
  CString value;
  if (!name.Set(key ? key : "") || !value.Set(text, length)) return false;
  return !_values.InsertOrAssign(std::move(name), std::move(value)).IsError();
}

const CString* FormatStatement::Get(const Char* key) const {
  const auto* entry = _values.Find(key);
  return entry ? &entry->GetValue() : nullptr;
}

}  // namespace vorna
