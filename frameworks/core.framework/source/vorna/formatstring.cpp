#include "vorna/translationunit.h"

#include "vorna/formatstring.h"

namespace vorna {

VORNA_DEFINE_STATIC_INTERFACE(StringConversion, nullptr, &StringConversion::Table::FloatToString,
                              &StringConversion::Table::IntToString, &StringConversion::Table::UIntToString,
                              &StringConversion::Table::GuidToString);

namespace {
void SetOrNull(String& out, const Char* text, Int length) {
  out.Reset();
  if (!text) text = "nullptr", length = 7;
  (void)out.SetCString(text, length);
}
}  // namespace

void FormatConverterOf<Id>::Convert(String& out, const void* value, const FormatStatement*) {
  const Id* id = static_cast<const Id*>(value);
  if (!id) return SetOrNull(out, nullptr, 0);
  SetOrNull(out, id->GetCString(), id->GetLength());
}

void FormatConverterOf<const Char*>::Convert(String& out, const void* value, const FormatStatement*) {
  const Char* text = *static_cast<const Char* const*>(value);
  SetOrNull(out, text, text ? -1 : 0);
}

void ConvertObjectForFormat(String& out, const ObjectInterface* value, const FormatStatement* statement) {
  if (!value || !*value) return SetOrNull(out, nullptr, 0);
  out = value->ToString(statement);
}

void FreeFormattedString(String* text) {
  if (!text) return;
  text->~String();
  System::Free(text);
}

String TakeFormattedString(String* text) {
  if (!text) return String();
  String result = std::move(*text);
  FreeFormattedString(text);
  return result;
}

}  // namespace vorna
