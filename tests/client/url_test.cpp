#include <gtest/gtest.h>
#include <unistd.h>

#include <string>

#include "host_environment.h"
#include "vorna/errorbase.h"
#include "vorna/url.h"

namespace vorna {
namespace {

std::string Text(const String& text) {
  Result<CString> bytes = text.GetCString();
  return bytes.IsError() ? "<error>" : std::string(bytes.GetValue().GetCString());
}

Url Parse(const Char* text) {
  Url url;
  EXPECT_FALSE(url.Set(text).IsError()) << text;
  return url;
}

TEST(UrlTest, SchemeIdsKeepTheirTexts) {
  const Id* schemes[] = {&URLSCHEME_HANDLER, &URLSCHEME_FILE, &URLSCHEME_WEBSOCKET, &URLSCHEME_WEBSOCKETSECURE,
                         &URLSCHEME_APKASSET};
  const Char* texts[] = {"handler", "file", "webSocket", "webSocketSecure", "apkasset"};
  for (size_t i = 0; i < std::size(schemes); ++i) EXPECT_STREQ(schemes[i]->GetCString(), texts[i]);
  EXPECT_TRUE(Parse("webSocketSecure://host/x").GetScheme() == URLSCHEME_WEBSOCKETSECURE);
}

TEST(UrlTest, ParsesSchemesAndPlainPaths) {
  Url memory = Parse("memory://clips/a.mp4");
  EXPECT_TRUE(memory.GetScheme() == URLSCHEME_MEMORY);
  EXPECT_EQ(Text(memory.GetPath()), "clips/a.mp4");
  EXPECT_EQ(Text(memory.ToString()), "memory://clips/a.mp4");

  Url plain = Parse("/tmp/movies/");
  EXPECT_TRUE(plain.GetScheme() == URLSCHEME_FILE);
  EXPECT_EQ(Text(plain.GetPath()), "/tmp/movies") << "trailing slashes go";
  EXPECT_TRUE(plain == Parse("file:///tmp/movies"));

  Url custom = Parse("x-private://thing");
  EXPECT_STREQ(custom.GetScheme().GetCString(), "x-private");

  char directory[4096];
  ASSERT_NE(getcwd(directory, sizeof(directory)), nullptr);
  EXPECT_EQ(Text(Parse("sub/clip.avi").GetPath()), std::string(directory) + "/sub/clip.avi")
      << "a relative plain path is taken against the working directory";
  EXPECT_TRUE(Parse("1abc://x").GetScheme() == URLSCHEME_FILE) << "not a scheme name, so a relative path";
}

TEST(UrlTest, SystemPathOnlyForFiles) {
  Result<String> path = Parse("/var/tmp/a.wav").GetSystemPath();
  ASSERT_FALSE(path.IsError());
  EXPECT_EQ(Text(path.GetValue()), "/var/tmp/a.wav");
  Result<String> none = Parse("memory://a.wav").GetSystemPath();
  EXPECT_TRUE(IsErrorOfClass(none.GetError(), g_UnsupportedOperationErrorObject));
  EXPECT_NE(Text(ErrorOf(none.GetError()).GetMessage()).find("memory://a.wav"), std::string::npos);
}

TEST(UrlTest, NullUrlReadsAsTheEmptyUrl) {
  Url null;
  EXPECT_TRUE(null.IsNull());
  EXPECT_TRUE(null.IsEmpty());
  EXPECT_TRUE(null.GetScheme().IsEmpty());
  EXPECT_EQ(Text(null.ToString()), "");
  EXPECT_TRUE(null == Parse(""));
  EXPECT_TRUE(null.GetDirectory().IsEmpty());
  EXPECT_FALSE(null == Parse("/a"));
}

TEST(UrlTest, DirectoryPartsDownToTheRoot) {
  Url url = Parse("/data/clips/take1.mov");
  EXPECT_EQ(Text(url.GetDirectory().ToString()), "file:///data/clips");
  EXPECT_EQ(Text(Parse("/take1.mov").GetDirectory().GetPath()), "/");
  EXPECT_TRUE(Parse("/").GetDirectory().IsEmpty()) << "the root has no directory part";
  EXPECT_TRUE(Parse("memory://single").GetDirectory().IsEmpty());
  EXPECT_EQ(Text(Parse("memory://a/b").GetDirectory().ToString()), "memory://a");
}

TEST(UrlTest, NamesSuffixesAndAppending) {
  Url url = Parse("/data/Clip.Final.MP4");
  EXPECT_EQ(Text(url.GetName()), "Clip.Final.MP4");
  EXPECT_EQ(Text(url.GetSuffix()), "MP4");
  EXPECT_TRUE(url.CheckSuffix("mp4"));
  EXPECT_FALSE(url.CheckSuffix("mp"));
  EXPECT_EQ(Text(Parse("/data/.hidden").GetSuffix()), "") << "a leading dot is no suffix";
  EXPECT_EQ(Text(Parse("/data.d/noext").GetSuffix()), "") << "a dot of the directory is no suffix";

  ASSERT_TRUE(url.SetSuffix("avi"));
  EXPECT_EQ(Text(url.GetName()), "Clip.Final.avi");
  ASSERT_TRUE(url.SetSuffix(""));
  EXPECT_EQ(Text(url.GetName()), "Clip.Final");

  Url directory = Parse("/data");
  ASSERT_TRUE(directory.Append("sub/"));
  ASSERT_TRUE(directory.Append(String::FromLiteral("x.wav")));
  EXPECT_EQ(Text(directory.GetPath()), "/data/sub/x.wav");
  Url root = Parse("/");
  ASSERT_TRUE(root.Append("etc"));
  EXPECT_EQ(Text(root.GetPath()), "/etc");
}

TEST(UrlTest, CopiesShareUntilOneWrites) {
  Url original = Parse("/data/a.mp4");
  Url copy = original;
  EXPECT_EQ(copy.GetBlock(), original.GetBlock());
  ASSERT_TRUE(copy.SetSuffix("avi"));
  EXPECT_NE(copy.GetBlock(), original.GetBlock());
  EXPECT_EQ(Text(original.GetName()), "a.mp4");
  EXPECT_EQ(Text(copy.GetName()), "a.avi");
  EXPECT_NE(original.GetHashCode(), copy.GetHashCode());
  EXPECT_EQ(original.GetHashCode(), Parse("file:///data/a.mp4").GetHashCode());
}

}  // namespace
}  // namespace vorna
