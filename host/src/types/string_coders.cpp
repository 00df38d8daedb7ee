#include "vorna/translationunit.h"

#include "types/string_coders.h"

#include <string>

#include "loading/registries.h"
#include "vorna/component.h"
#include "vorna/stringencoding.h"

namespace vorna::host {

namespace {

const Char* const NAMES[] = {"systemcodepage", "bit8", "hex7", "utf8", "utf16",
                             "url", "url32", "urlpath", "urlquery", "codepage437"};

class StringEncodingComponent : public Component<StringEncodingComponent> {
 public:
  static ClassRecord _classRecord;
  CoderKind kind = CoderKind::UTF8;
  Result<void> CopyFrom(const StringEncodingComponent& source) {
    kind = source.kind;
    return OK;
  }
};

class StringDecodingComponent : public Component<StringDecodingComponent> {
 public:
  static ClassRecord _classRecord;
  CoderKind kind = CoderKind::UTF8;
  Result<void> CopyFrom(const StringDecodingComponent& source) {
    kind = source.kind;
    return OK;
  }
};

}  // namespace

VORNA_COMPONENT_CLASS(StringEncodingComponent, g_stringEncodingClass, "vorna.StringEncodingClass", "", nullptr,
                      &StringEncodingInterface::_record);
VORNA_COMPONENT_CLASS(StringDecodingComponent, g_stringDecodingClass, "vorna.StringDecodingClass", "", nullptr,
                      &StringDecodingInterface::_record);

namespace {

template <typename COMPONENT>
void PublishCoder(ObjectDefinitionRecord& cls, CoderKind kind, const std::string& registry, const char* suffix) {
  Result<ObjectRef> made = CreateObjectOfClass(GetDefinedClass(cls), VORNA_SOURCE_LOCATION);
  if (made.IsError()) return;
  GetComponent<COMPONENT>(made.GetValue())->kind = kind;
  std::string member = std::string("string.") + NAMES[int(kind)] + suffix;
  Data value = MakeObjectData(made.GetValue());
  (void)Publish(Id((registry + ":" + member).c_str()), value);
  (void)Publish(Id(("vorna.StreamConversions:" + member).c_str()), value);
}

}  // namespace

void PublishStringCoders() {
  for (int k = 0; k <= int(CoderKind::CODEPAGE437); ++k) {
    PublishCoder<StringEncodingComponent>(g_stringEncodingClass, CoderKind(k), "vorna.StringEncodings", ".enc");
    PublishCoder<StringDecodingComponent>(g_stringDecodingClass, CoderKind(k), "vorna.StringDecodings", ".dec");
  }
}

CoderKind KindOfCoder(const void* coder) {
  ObjectInterface object(const_cast<void*>(coder));
  if (auto* decoding = GetComponent<StringDecodingComponent>(object)) return decoding->kind;
  if (auto* encoding = GetComponent<StringEncodingComponent>(object)) return encoding->kind;
  return CoderKind::UTF8;
}

const Char* NameOfCoder(CoderKind kind) { return NAMES[int(kind)]; }

}  // namespace vorna::host
