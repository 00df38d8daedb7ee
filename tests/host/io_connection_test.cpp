// Connections of the file and memory handlers through the client functions: what a
// url has behind it, errors with their paths, directory walks and deleting.
#include <gtest/gtest.h>
#include <stdlib.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "host_environment.h"
#include "vorna/datatypes.h"
#include "vorna/errorbase.h"
#include "vorna/extensionpoint.h"
#include "vorna/ioconnection.h"

namespace vorna {
namespace {

namespace fs = std::filesystem;

Url MakeUrl(const std::string& text) {
  Url url;
  EXPECT_FALSE(url.Set(text.c_str()).IsError());
  return url;
}

std::string MessageOf(ErrorWord error) {
  Result<CString> text = ErrorOf(error).GetMessage().GetCString();
  return text.IsError() ? std::string() : text.GetValue().GetCString();
}

std::string NameOf(const Url& url) {
  Result<CString> text = url.GetName().GetCString();
  return text.IsError() ? std::string() : text.GetValue().GetCString();
}

void WriteFile(const fs::path& path, const std::string& content) { std::ofstream(path) << content; }

class IoConnectionTest : public ::testing::Test {
 protected:
  void SetUp() override {
    char pattern[] = "/tmp/vorna-io-connection-XXXXXX";
    ASSERT_NE(mkdtemp(pattern), nullptr);
    _root = pattern;
  }
  void TearDown() override { fs::remove_all(_root); }

  Url UrlOf(const std::string& relative) const { return MakeUrl((_root / relative).string()); }

  fs::path _root;
};

TEST(IoHandlersTest, UnknownSchemeHasNoConnectionAndNoError) {
  Url url = MakeUrl("nowhere://some/where.mp4");
  Result<IoConnectionRef> connection = GetConnection(url, 0);
  EXPECT_FALSE(connection.IsError());
  EXPECT_FALSE(connection.GetValue());
  EXPECT_EQ(IoDetect(url), IoDetectResult::NONE);
  EXPECT_TRUE(IsErrorOfClass(OpenInputStream(url, 0).GetError(), g_NullptrErrorObject));
  EXPECT_TRUE(IsErrorOfClass(IoDelete(url, true, false).GetError(), g_NullptrErrorObject));
  EXPECT_EQ(IoDetect(Url()), IoDetectResult::NONE);
}

TEST(IoHandlersTest, MemberThatIsNoHandlerGivesNoConnection) {
  ExtensionPointHandle* handlers = ExtensionPoint::Find(Id("vorna.IoHandlers"));
  ASSERT_FALSE(ExtensionPoint::Insert(handlers, Id("number"), MakeData(Int32(7))).IsError());
  Result<IoConnectionRef> connection = GetConnection(MakeUrl("number://x"), 0);
  ExtensionPoint::Erase(handlers, Id("number"));
  EXPECT_FALSE(connection.IsError());
  EXPECT_FALSE(connection.GetValue());
}

// Both handlers answer under their scheme names, so they are registered as such.
TEST_F(IoConnectionTest, DetectsFilesDirectoriesAndBlobs) {
  WriteFile(_root / "clip.avi", "RIFF");
  EXPECT_EQ(IoDetect(UrlOf("clip.avi")), IoDetectResult::FILE);
  EXPECT_EQ(IoDetect(MakeUrl(_root.string())), IoDetectResult::DIRECTORY);
  EXPECT_EQ(IoDetect(UrlOf("missing.avi")), IoDetectResult::NONE);
  EXPECT_EQ(IoDetect(MakeUrl("/dev/null")), IoDetectResult::NONE) << "a device is no file";

  host::RegisterMemoryBlob("io-connection/blob", {1, 2, 3});
  EXPECT_EQ(IoDetect(MakeUrl("memory://io-connection/blob")), IoDetectResult::FILE);
  Result<IoConnectionRef> connection = GetConnection(MakeUrl("memory://io-connection/blob"), 0);
  ASSERT_FALSE(connection.IsError());
  EXPECT_EQ(connection.GetValue().GetContentLength().GetValue(), 3);
  EXPECT_TRUE(connection.GetValue().GetUrl() == MakeUrl("memory://io-connection/blob"));
  ASSERT_FALSE(IoDelete(MakeUrl("memory://io-connection/blob"), false, false).IsError());
  EXPECT_EQ(IoDetect(MakeUrl("memory://io-connection/blob")), IoDetectResult::NONE);
}

TEST_F(IoConnectionTest, FailuresAreIoErrorsWithThePath) {
  std::string missing = (_root / "no" / "such.mp4").string();
  Result<InputStreamRef> stream = OpenInputStream(MakeUrl(missing), 0);
  EXPECT_TRUE(IsErrorOfClass(stream.GetError(), g_IoErrorObject));
  EXPECT_EQ(MessageOf(stream.GetError()), "Cannot open file " + missing + ": No such file or directory");

  Result<InputStreamRef> directory = OpenInputStream(MakeUrl(_root.string()), 0);
  EXPECT_EQ(MessageOf(directory.GetError()), "Cannot open file " + _root.string() + ": Is a directory");

  Result<IoConnectionRef> connection = GetConnection(MakeUrl(missing), 0);
  ASSERT_FALSE(connection.IsError());
  Result<Int64> length = connection.GetValue().GetContentLength();
  EXPECT_TRUE(IsErrorOfClass(length.GetError(), g_IoErrorObject));
  EXPECT_NE(MessageOf(length.GetError()).find(missing), std::string::npos);
}

TEST_F(IoConnectionTest, PlainDeleteTakesFilesAndEmptyDirectoriesOnly) {
  WriteFile(_root / "out.avi", "x");
  fs::create_directory(_root / "full");
  WriteFile(_root / "full" / "keep.txt", "x");
  ASSERT_FALSE(IoDelete(UrlOf("out.avi"), true, false).IsError());
  EXPECT_FALSE(fs::exists(_root / "out.avi"));

  Result<void> again = IoDelete(UrlOf("out.avi"), true, false);
  EXPECT_TRUE(IsErrorOfClass(again.GetError(), g_IoErrorObject));
  EXPECT_NE(MessageOf(again.GetError()).find((_root / "out.avi").string()), std::string::npos);

  EXPECT_TRUE(IsErrorOfClass(IoDelete(UrlOf("full"), true, false).GetError(), g_IoErrorObject));
  EXPECT_TRUE(fs::exists(_root / "full" / "keep.txt"));
}

TEST_F(IoConnectionTest, BrowseListsEntriesWithTheirFlags) {
  fs::create_directory(_root / "sub");
  WriteFile(_root / "a.wav", "12345");
  WriteFile(_root / ".hidden", "");
  fs::create_directory(_root / "empty");
  Result<IoConnectionRef> connection = GetConnection(MakeUrl(_root.string()), 0);
  ASSERT_FALSE(connection.IsError());

  for (Int flags : {Int(0), IOBROWSE_ALL}) {
    Result<IoBrowseRef> browse = connection.GetValue().GetBrowseIterator(flags);
    ASSERT_FALSE(browse.IsError());
    ASSERT_TRUE(browse.GetValue().HasEntry());
    std::vector<std::string> names;
    while (browse.GetValue().GetNext().GetValue()) {
      Url entry = browse.GetValue().GetCurrentPath();
      names.push_back(NameOf(entry));
      EXPECT_TRUE(entry.GetDirectory() == MakeUrl(_root.string()));
      Bool directory = (browse.GetValue().IoGetFlags() & IOFLAGS_DIRECTORY) != 0;
      EXPECT_EQ(directory, names.back() == "sub" || names.back() == "empty") << names.back();
      if (names.back() == "a.wav") {
        EXPECT_EQ(browse.GetValue().GetSize(), 5);
      }
    }
    EXPECT_FALSE(browse.GetValue().HasEntry());
    std::sort(names.begin(), names.end());
    std::vector<std::string> expected = {"a.wav", "empty", "sub"};
    if (flags == IOBROWSE_ALL) expected.insert(expected.begin(), ".hidden");
    EXPECT_EQ(names, expected);
  }

  Result<IoBrowseRef> empty = GetConnection(UrlOf("empty"), 0).GetValue().GetBrowseIterator(0);
  ASSERT_FALSE(empty.IsError());
  EXPECT_FALSE(empty.GetValue().HasEntry());
  EXPECT_FALSE(empty.GetValue().GetNext().GetValue());
}

TEST_F(IoConnectionTest, RecursiveDeleteLeavesNothingAndDoesNotFollowLinks) {
  fs::path tree = _root / "tree";
  fs::create_directories(tree / "a" / "b" / "c");
  fs::create_directories(tree / "empty");
  WriteFile(tree / "top.mp4", "x");
  WriteFile(tree / ".dotfile", "x");
  WriteFile(tree / "a" / "one.wav", "x");
  WriteFile(tree / "a" / "b" / "two.avi", "x");
  WriteFile(tree / "a" / "b" / "c" / ".three", "x");
  fs::create_directory(_root / "outside");
  WriteFile(_root / "outside" / "precious.txt", "x");
  fs::create_directory_symlink(_root / "outside", tree / "a" / "link");

  Result<void> deleted = IoDelete(MakeUrl(tree.string()), true, true);
  ASSERT_FALSE(deleted.IsError()) << MessageOf(deleted.GetError());
  EXPECT_FALSE(fs::exists(tree));
  EXPECT_TRUE(fs::exists(_root / "outside" / "precious.txt")) << "a link to a directory is deleted, not walked";

  WriteFile(_root / "single.mov", "x");
  ASSERT_FALSE(IoDelete(UrlOf("single.mov"), true, true).IsError()) << "a file goes by the plain delete";
  EXPECT_FALSE(fs::exists(_root / "single.mov"));
}

TEST_F(IoConnectionTest, RecursiveDeleteRefusesEmptyPaths) {
  for (const Url& url : {Url(), MakeUrl("memory://io-connection-toplevel")}) {
    host::RegisterMemoryBlob("io-connection-toplevel", {1});
    Result<void> deleted = IoDelete(url, true, true);
    EXPECT_TRUE(IsErrorOfClass(deleted.GetError(), g_IllegalArgumentErrorObject));
    EXPECT_EQ(MessageOf(deleted.GetError()), "input path is empty");
    EXPECT_EQ(IoDetect(MakeUrl("memory://io-connection-toplevel")), IoDetectResult::FILE);
  }
  host::UnregisterMemoryBlob("io-connection-toplevel");
  Result<void> missing = IoDelete(UrlOf("gone"), true, true);
  EXPECT_TRUE(IsErrorOfClass(missing.GetError(), g_IoErrorObject));
}

}  // namespace
}  // namespace vorna
