// The host's parsers of text that comes from outside: urls (a path or url given on the
// command line), the @ format language (a message text), UTF-8 and UTF-16 text, and the
// values of configuration variables. Each takes the fuzzer's bytes whole. Round trips
// that must hold are checked: a url of well-formed UTF-8 reads back as itself from its
// own text, and a string comes back as itself through either encoding.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "fuzz_host.h"
#include "vorna/formatstring.h"
#include "vorna/url.h"
#include "vorna_host.h"

namespace {

using namespace vorna;

void Require(bool condition) {
  if (!condition) std::abort();
}

// Whether the bytes are well-formed UTF-8: they come back unchanged through a String,
// which holds ill-formed input as U+FFFD.
bool IsUtf8(const std::string& text) {
  String string;
  if (string.SetCString(text.data(), Int(text.size())).IsError()) return false;
  Result<CString> back = string.GetCString();
  return !back.IsError() && std::string(back.GetValue().GetCString(), size_t(back.GetValue().GetLength())) == text;
}

void ParseUrl(const std::string& text) {
  Url url;
  Result<void> set = url.Set(text.data(), Int(text.size()));
  tessel::fuzz::RequireClearAnswer(set);
  if (set.IsError()) return;
  // A url keeps the bytes it was given; its text is a String, so only a url of
  // well-formed UTF-8 reads back as itself.
  if (IsUtf8(text)) {
    Url again;
    Result<void> reread = again.Set(url.ToString());
    Require(!reread.IsError() && again == url);
  }
  tessel::fuzz::RequireClearAnswer(url.GetSystemPath());
  (void)url.GetName();
  (void)url.GetSuffix();
  (void)url.CheckSuffix("mp4");
  (void)url.GetDirectory();
  (void)url.SetSuffix("mov");
  (void)url.Append(text.data(), Int(text.size()));
}

// Text is held as code points, ill-formed input as U+FFFD: whatever the bytes, a
// string comes back unchanged through UTF-16 and through UTF-8.
void ConvertText(const std::string& text) {
  String fromUtf8;
  if (!fromUtf8.SetCString(text.data(), Int(text.size())).IsError()) {
    Result<BaseArray<Utf16Char>> utf16 = fromUtf8.GetUtf16();
    tessel::fuzz::RequireClearAnswer(utf16);
    String back;
    // The copy ends in a terminating zero, which is no character of the string.
    if (!utf16.IsError() && !back.SetUtf16(utf16.GetValue().GetData(), utf16.GetValue().GetCount() - 1).IsError())
      Require(back == fromUtf8);
  }
  String fromUtf16;
  if (!fromUtf16.SetUtf16(reinterpret_cast<const Utf16Char*>(text.data()), Int(text.size() / 2)).IsError()) {
    Result<CString> utf8 = fromUtf16.GetCString();
    tessel::fuzz::RequireClearAnswer(utf8);
    String back;
    if (!utf8.IsError() && !back.SetCString(utf8.GetValue().GetCString(), utf8.GetValue().GetLength()).IsError())
      Require(back == fromUtf16);
  }
}

void Format(const std::string& text) {
  String name = FormatToString("name");
  (void)FormatToString(text.c_str(), Int64(-42), Float64(1.5e300), UInt32(0xFFFFFFFF), name, Float64(-0.25));
  (void)FormatToString(text.c_str());
}

void SetConfigurationValues(const std::string& text) {
  for (const host::ConfigurationInfo& variable : host::ListConfiguration()) {
    if (host::SetConfiguration(variable.name, text)) host::SetConfiguration(variable.name, variable.value ? "true" : "false");
  }
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  tessel::fuzz::StartHostWithModule();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
  const std::string text(reinterpret_cast<const char*>(bytes), size);
  ParseUrl(text);
  ConvertText(text);
  Format(text);
  SetConfigurationValues(text);
  return 0;
}
