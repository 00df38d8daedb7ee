#include <gtest/gtest.h>

#include "host_environment.h"
#include "vorna/errorbase.h"
#include "vorna/string.h"
#include "vorna/stringencoding.h"

namespace vorna {
namespace {

std::string Bytes(const String& s, const void* encoding = nullptr) {
  Result<CString> bytes = s.GetCString(encoding);
  return bytes.IsError() ? "<error>" : std::string(bytes.GetValue().GetCString(), size_t(bytes.GetValue().GetLength()));
}

TEST(StringTest, Utf8AndUtf16InAndOut) {
  String s;
  ASSERT_FALSE(s.SetCString("Grüße, 世界 \xF0\x9F\x8E\xAC").IsError());
  EXPECT_EQ(s.GetLength(), 11) << "code points, not bytes";
  Result<BaseArray<Utf16Char>> wide = s.GetUtf16();
  ASSERT_FALSE(wide.IsError());
  EXPECT_EQ(wide.GetValue().GetCount(), 13) << "the film frame takes a surrogate pair, plus the terminator";
  EXPECT_EQ(wide.GetValue()[12], 0);
  String back;
  ASSERT_FALSE(back.SetUtf16(wide.GetValue().GetData()).IsError());
  EXPECT_TRUE(back == s);
  EXPECT_EQ(Bytes(back), "Grüße, 世界 \xF0\x9F\x8E\xAC");
}

TEST(StringTest, IllFormedBytesBecomeReplacementCharacters) {
  String s;
  ASSERT_FALSE(s.SetCString("a\xC3(b\xFF\xEF\xBF\xBD").IsError());
  EXPECT_EQ(Bytes(s), "a\xEF\xBF\xBD(b\xEF\xBF\xBD\xEF\xBF\xBD");
  EXPECT_EQ(s.GetLength(), 6) << "a written replacement character stays one";
}

TEST(StringTest, PublishedCodersChangeTheBytes) {
  StringDecodingInterface latin1Decoder(GetStringCoder(g_systemCodePageDecoding).GetPointer());
  ASSERT_TRUE(GetUtf8DefaultDecoder());
  ASSERT_TRUE(GetUtf8DefaultEncoder());
  String s;
  ASSERT_FALSE(s.SetCString("\xE9t\xE9", 3, GetStringCoder(g_utf16Decoding).GetPointer()).IsError());
  EXPECT_EQ(s.GetLength(), 1) << "three bytes are one UTF-16 unit and a stray byte";
  ASSERT_FALSE(s.SetCString("caf\xC3\xA9").IsError());
  EXPECT_EQ(Bytes(s, GetStringCoder(g_utf16Encoding).GetPointer()), std::string("c\0a\0f\0\xE9\0", 8));
  EXPECT_EQ(Bytes(s, GetStringCoder(g_systemCodePageEncoding).GetPointer()), "caf\xC3\xA9");
}

TEST(StringTest, CopyOnWriteKeepsCopiesApart) {
  String a;
  ASSERT_FALSE(a.SetCString("one").IsError());
  String b = a;
  EXPECT_EQ(a.GetBlock(), b.GetBlock());
  EXPECT_TRUE(b.AppendCString(" two"));
  EXPECT_EQ(Bytes(a), "one");
  EXPECT_EQ(Bytes(b), "one two");
  String literal = String::FromLiteral("fixed");
  EXPECT_EQ(literal.GetBlock(), String::FromLiteral("fixed").GetBlock());
}

}  // namespace
}  // namespace vorna
