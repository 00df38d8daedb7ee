// The import as the host meets it: the module loaded by name, its published formats
// and handlers found in the registries, files read through the reading session.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "fixtures.h"
#include "host_environment.h"
#include "loaded_module.h"
#include "tessel_platform_control.h"
#include "vorna/datatypelib.h"
#include "vorna/extensionpoint.h"
#include "vorna/fileformat.h"
#include "vorna/mediasession_keys.h"
#include "vorna/referencedata.h"
#include "vorna_session.h"

namespace vorna {
namespace {

using vorna::host::ReadingSession;
using tessel::testing::WithLoadedModule;
namespace fixtures = tessel::fixtures;

Url MakeUrl(const std::string& text) {
  Url url;
  EXPECT_FALSE(url.Set(text.c_str()).IsError());
  return url;
}

template <typename I>
StrongRef<I> Member(const char* registry, const char* member) {
  return GetObjectFromData<I>(ExtensionPoint::FindEntry(ExtensionPoint::Find(Id(registry)), Id(member)));
}

std::vector<std::string> Suffixes(const FileFormatInterface& format) {
  std::vector<std::string> texts;
  Result<Data> data = format.GetData(g_fileFormatCommonsuffixes);
  if (data.IsError()) return texts;
  for (const String& suffix : GetBlockFromData<String>(data.GetValue())) texts.push_back(suffix.GetCString().GetValue().GetCString());
  return texts;
}

std::vector<UChar> FileBytes(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

class ImportModuleTest : public WithLoadedModule<> {
 protected:
  void TearDown() override {
    vorna::host::SetConfiguration("g_mediaFoundationUseMSUrlReader", "false");
    WithLoadedModule::TearDown();
  }

};

TEST_F(ImportModuleTest, TheFormatsAndHandlersArePublishedWithTheirSuffixesAndRanks) {
  StrongRef<FileFormatInterface> movie = Member<FileFormatInterface>("vorna.FileFormats", "movie.winmf");
  StrongRef<FileFormatInterface> audio = Member<FileFormatInterface>("vorna.FileFormats", "audio.winmf");
  ASSERT_TRUE(movie && audio);
  EXPECT_EQ(Suffixes(movie), (std::vector<std::string>{"avi", "wmv", "mp4", "3g2", "3gp", "3gp2", "3gpp", "asf", "wma",
                                                       "m4a", "m4v", "mov", "sami", "smi"}));
  EXPECT_EQ(Suffixes(audio), std::vector<std::string>{"mp3"});

  auto movieHandler = Member<FileFormatHandlerInterface>("vorna.FileFormatHandlers", "movie.winmf");
  auto audioHandler = Member<FileFormatHandlerInterface>("vorna.FileFormatHandlers", "audio.winmf");
  ASSERT_TRUE(movieHandler && audioHandler);
  EXPECT_EQ(movieHandler.GetDependends(), 29990);
  EXPECT_EQ(audioHandler.GetDependends(), 29989);
  EXPECT_EQ(movieHandler.GetFileFormat().GetPointer(), movie.GetPointer());
  EXPECT_EQ(audioHandler.GetFileFormat().GetPointer(), audio.GetPointer());
  EXPECT_FALSE(movieHandler.GetHandlerType().IsError());
}

TEST_F(ImportModuleTest, EachFileIsClaimedByTheFormatsThatCanServeIt) {
  Result<std::unique_ptr<ReadingSession>> movie = ReadingSession::Open(MakeUrl(fixtures::Path(fixtures::kMovieAac.name)));
  ASSERT_FALSE(movie.IsError());
  EXPECT_EQ(movie.GetValue()->GetDetectedFormats(), (std::vector<std::string>{"movie.winmf", "audio.winmf"}));
  EXPECT_EQ(movie.GetValue()->GetStreams().GetCount(), 2);

  Result<std::unique_ptr<ReadingSession>> sound = ReadingSession::Open(MakeUrl(fixtures::Path(fixtures::kAudioMp3)));
  ASSERT_FALSE(sound.IsError());
  EXPECT_EQ(sound.GetValue()->GetHandler(), "audio.winmf");
  EXPECT_EQ(sound.GetValue()->GetStreams().GetCount(), 1);

  Result<std::unique_ptr<ReadingSession>> text = ReadingSession::Open(MakeUrl(fixtures::Path(fixtures::kText)));
  EXPECT_TRUE(IsErrorOfClass(text.GetError(), g_IoErrorObject));
}

TEST_F(ImportModuleTest, TheUrlReaderSwitchIsReadAtEveryOpen) {
  vorna::host::RegisterMemoryBlob("import-module/movie.mp4", FileBytes(fixtures::Path(fixtures::kMovieAac.name)));
  Url url = MakeUrl("memory://import-module/movie.mp4");
  Result<std::unique_ptr<ReadingSession>> byStream = ReadingSession::Open(url);
  ASSERT_FALSE(byStream.IsError());
  EXPECT_EQ(byStream.GetValue()->GetStreams().GetCount(), 2);
  ASSERT_TRUE(vorna::host::SetConfiguration("g_mediaFoundationUseMSUrlReader", "true"));
  Result<std::unique_ptr<ReadingSession>> byUrl = ReadingSession::Open(url);
  EXPECT_TRUE(IsErrorOfClass(byUrl.GetError(), g_IoErrorObject)) << "a memory url has no system path";
  vorna::host::UnregisterMemoryBlob("import-module/movie.mp4");
}

}  // namespace
}  // namespace vorna
