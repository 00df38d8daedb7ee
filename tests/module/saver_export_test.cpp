// The Media Foundation savers driven as a media session drives them, with the host's
// test-pattern source as input: the movie each writes is read back through the module
// and compared with the pattern, and the session's edge cases (sizes, codecs, audio,
// Close and the destructor) are checked on the files and errors they leave.
#include "vorna/translationunit.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <cmath>
#include <filesystem>
#include <string>
#include <vector>

#include "fixtures.h"
#include "loaded_module.h"
#include "reference_decoder.h"
#include "vorna/component.h"
#include "vorna/extensionpoint.h"
#include "vorna/mediasession_keys.h"
#include "vorna/mediasession_output.h"
#include "vorna/referencedata.h"
#include "vorna/resourceid.h"
#include "vorna/saversettings.h"
#include "vorna_session.h"
#include "vorna_sinks.h"
#include "vorna_test_pattern.h"

namespace vorna {
namespace {

using host::TestPatternOptions;
using tessel::testing::WithLoadedModule;

VORNA_DEFINE_RESOURCE_ID(g_codecKey, "codec");
VORNA_DEFINE_RESOURCE_ID(g_audioCodecKey, "audio.codec");

// The class and message of a failed result, for the test's own messages.
template <typename T>
std::string ErrorText(const Result<T>& result) {
  if (!result.IsError()) return "no error";
  const Id* cls = GetErrorClassId(result.GetError());
  Result<CString> message = ErrorOf(result.GetError()).GetMessage().GetCString();
  const SourceLocation where = ErrorOf(result.GetError()).GetLocation();
  return std::string(cls ? cls->GetCString() : "?") + ": " + (message.IsError() ? "" : message.GetValue().GetCString()) +
         " [" + (where.file ? where.file : "") + ":" + std::to_string(where.line) + "]";
}

std::string TempPath(const std::string& name) {
  return (std::filesystem::temp_directory_path() / ("tessel_saver_" + std::to_string(getpid()) + "_" + name)).string();
}

// A saver of vorna.ImageSavers with its output url and the test pattern as its input.
struct Export {
  ObjectRef saver;
  ObjectRef source;

  MediaConverterInterface Converter() const { return MediaConverterInterface(saver.GetPointer()); }
  ConverterBlock Inputs() const { return {&source, 1}; }

  Result<void> Analyze() { return Converter().Analyze(Inputs(), 0, 0); }
  Result<void> Frame(Int index, Float64 fps) { return Converter().Execute(Inputs(), TimeValue(index / fps), 0); }
  Result<void> Close() { return Converter().Close(Inputs()); }
};

Export NewExport(const char* saverId, const std::string& path, const TestPatternOptions& options,
                 const DataDictionary& settings) {
  Export made;
  const Data* entry = ExtensionPoint::FindEntry(ExtensionPoint::Find(Id("vorna.ImageSavers")), Id(saverId));
  Result<ObjectRef> saver = CreateObjectOfClass(GetClassFromData(entry), VORNA_SOURCE_LOCATION);
  EXPECT_FALSE(saver.IsError()) << saverId;
  if (saver.IsError()) return made;
  made.saver = saver.GetValue();
  Url url;
  EXPECT_FALSE(url.Set(path.c_str()).IsError());
  EXPECT_FALSE(MediaOutputUrlInterface(made.saver.GetPointer()).SetOutputUrl(url).IsError());
  Result<MediaConverter> source = host::CreateTestPatternSource(options);
  EXPECT_FALSE(source.IsError());
  made.source = ObjectRef(source.GetValue());
  // The pattern publishes its streams at its first Analyze; their first formats are then
  // selected and the image format takes the export settings, as a session's bridge does.
  MediaConverterInterface input(made.source.GetPointer());
  EXPECT_FALSE(input.Analyze({}, 0, 0).IsError());
  Result<BaseArray<MediaStream>> streams = input.GetOutputStreams(1);
  MediaStream image = streams.GetValue()[0];
  for (const MediaStream& stream : streams.GetValue()) EXPECT_FALSE(stream.SetSelectedFormat(MakeData(Int64(1))).IsError());
  EXPECT_FALSE(image.GetFormat(image.GetSelectedFormat()).SetData(g_mediaFormatExportsettings, settings).IsError());
  return made;
}

// Writes frames of the pattern through the saver and closes it.
Result<void> WriteMovie(const char* saverId, const std::string& path, const TestPatternOptions& options,
                        const DataDictionary& settings, Int frames) {
  Export movie = NewExport(saverId, path, options, settings);
  VORNA_RETURN_ON_ERROR(movie.Analyze());
  VORNA_RETURN_ON_ERROR(movie.Converter().PrepareExecute(movie.Inputs(), 0, 0));
  for (Int i = 0; i < frames; ++i) VORNA_RETURN_ON_ERROR(movie.Frame(i, options.fps));
  return movie.Close();
}

// The pattern's frame n as RGBA, top line first.
std::vector<uint8_t> PatternFrame(Int frame, Int width, Int height) {
  std::vector<uint8_t> pixels(size_t(width * height * 4));
  for (Int y = 0; y < height; ++y)
    for (Int x = 0; x < width; ++x) host::TestPatternPixel(frame, x, y, pixels.data() + 4 * (y * width + x));
  return pixels;
}

// A written movie as the module reads it back.
class MovieReader {
 public:
  explicit MovieReader(const std::string& path) {
    Url url;
    EXPECT_FALSE(url.Set(path.c_str()).IsError());
    auto opened = host::ReadingSession::Open(url);
    EXPECT_FALSE(opened.IsError()) << path;
    if (opened.IsError()) return;
    _session = std::move(opened.GetValue());
    _sink = host::AttachImageSink(_session->GetStreams()[0], "vorna.PixelFormats.RGBA:u8");
    EXPECT_FALSE(_session->Subscribe(0, MakeData(Int64(1))).IsError());
    EXPECT_FALSE(_session->PrepareExecute().IsError());
  }
  Bool IsOpen() const { return _session != nullptr; }
  Int StreamCount() const { return _session ? _session->GetStreams().GetCount() : 0; }
  MediaStreamFormat VideoFormat() const {
    const MediaStream& video = _session->GetStreams()[0];
    return video.GetFormat(MakeData(Int64(1)));
  }
  host::ImageFrame FrameAt(Float64 seconds) {
    EXPECT_FALSE(_session->Execute(TimeValue(seconds), MEDIASESSIONFLAGS_FORCE).IsError()) << seconds;
    return _sink->GetFrame();
  }

 private:
  std::unique_ptr<host::ReadingSession> _session;
  std::shared_ptr<host::ImageSink> _sink;
};

// The frame packed to width x height RGBA, as the pattern is.
std::vector<uint8_t> Packed(const host::ImageFrame& frame, Int width, Int height) {
  std::vector<uint8_t> packed;
  for (Int y = 0; y < height && y < frame.height; ++y) {
    const uint8_t* line = frame.pixels.data() + y * frame.bytesPerLine;
    packed.insert(packed.end(), line, line + std::min<Int>(width, frame.width) * 4);
  }
  return packed;
}

class SaverExportTest : public WithLoadedModule<> {
 protected:
  void TearDown() override {
    for (const std::string& path : _paths) std::filesystem::remove(path);
    WithLoadedModule::TearDown();
  }
  std::string Output(const std::string& name) {
    _paths.push_back(TempPath(name));
    return _paths.back();
  }
  std::vector<std::string> _paths;
};

TEST_F(SaverExportTest, Mp4WithSoundReadsBackFrameByFrameUpright) {
  TestPatternOptions options;
  options.width = 160;
  options.height = 120;
  options.duration = 1.0;
  const std::string path = Output("pattern.mp4");
  Result<void> written = WriteMovie("mp4", path, options, DataDictionary(), 25);
  ASSERT_FALSE(written.IsError()) << ErrorText(written);
  MovieReader reader(path);
  ASSERT_TRUE(reader.IsOpen());
  EXPECT_EQ(reader.StreamCount(), 2) << "picture and sound";
  for (Int k = 0; k < 25; ++k) {
    host::ImageFrame frame = reader.FrameAt(k / 25.0 + 0.001);
    ASSERT_EQ(frame.width, 160);
    ASSERT_EQ(frame.height, 120);
    EXPECT_GE(tessel::fixtures::Psnr(Packed(frame, 160, 120), PatternFrame(k, 160, 120)), 35.0) << "frame " << k;
  }
}

}  // namespace
}  // namespace vorna
