// The AVI export's own parts, compiled into the test: the writer's frame format, stream
// rate and compressor options as it hands them to Video for Windows, the sound it leaves
// out, the files it replaces, and the compressor chooser's round trip through the
// export settings.
#include "vorna/translationunit.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "avi_compressor_choice.h"
#include "avi_settings.h"
#include "tessel_platform_control.h"
#include "vorna/array.h"
#include "vorna/component.h"
#include "vorna/objectuse.h"
#include "vorna/errorbase.h"
#include "vorna/saversettings.h"
#include "windows_avi_movie_writer.h"

extern "C" {
#include <libavformat/avformat.h>
}

namespace tessel {
namespace {

using namespace vorna;

VORNA_DEFINE_OBJECT_USE(g_audioObjects, "vorna.AudioObjectClass");

constexpr DWORD MJPG = mmioFOURCC('m', 'j', 'p', 'g');
constexpr DWORD IYUV = mmioFOURCC('i', 'y', 'u', 'v');

class AviExportTest : public ::testing::Test {
 protected:
  void SetUp() override {
    _directory = std::filesystem::temp_directory_path() /
                 ("tessel-avi-" + std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()));
    std::filesystem::create_directories(_directory);
  }
  void TearDown() override {
    _writer.End();
    TesselPlatformSetCompressorChooser(nullptr, nullptr);
    std::filesystem::remove_all(_directory);
  }

  std::string PathFor(const std::string& name) const { return (_directory / name).string(); }

  Result<void> Open(const std::string& name, Int width, Int height, const DataDictionary& settings, Float64 fps = 25) {
    Url url;
    EXPECT_FALSE(url.Set(PathFor(name).c_str()).IsError());
    return _writer.Init(url, width, height, settings, fps);
  }

  std::filesystem::path _directory;
  WindowsAviMovieWriter _writer;
};

// The number of streams FFmpeg finds in a finished file.
int StreamsInFile(const std::string& path) {
  AVFormatContext* context = nullptr;
  if (avformat_open_input(&context, path.c_str(), nullptr, nullptr) < 0) return -1;
  int count = avformat_find_stream_info(context, nullptr) < 0 ? -1 : int(context->nb_streams);
  avformat_close_input(&context);
  return count;
}

TEST_F(AviExportTest, FrameFormatRoundsToFourAndIsStoredBottomUp) {
  ASSERT_FALSE(Open("odd.avi", 641, 481, DataDictionary()).IsError());
  EXPECT_EQ(_writer._alignedWidth, 644);
  EXPECT_EQ(_writer._alignedHeight, 484);
  EXPECT_EQ(_writer._bytesPerLine, 1932);
  EXPECT_EQ(_writer._bitmapInfo.biWidth, 644);
  EXPECT_EQ(_writer._bitmapInfo.biHeight, 484) << "positive: rows bottom-up";
  EXPECT_EQ(_writer._bitmapInfo.biBitCount, 24);
  EXPECT_EQ(_writer._bitmapInfo.biSizeImage, 484u * 1932u);
  EXPECT_EQ(_writer._streamInfo.dwSuggestedBufferSize, 484u * 1932u);
  EXPECT_EQ(_writer._streamInfo.rcFrame.right, 644);
  EXPECT_EQ(_writer._streamInfo.rcFrame.bottom, 484);
}

TEST_F(AviExportTest, RateAndScaleKeepOnlyFactorsOfTen) {
  struct Case {
    Float64 fps;
    DWORD rate, scale;
  } cases[] = {{25, 25, 1}, {29.97, 2997, 100}, {23.976, 23976, 1000}, {0.5, 5, 10}};
  for (const Case& c : cases) {
    ASSERT_FALSE(Open("rate.avi", 64, 48, DataDictionary(), c.fps).IsError()) << c.fps;
    EXPECT_EQ(_writer._streamInfo.dwRate, c.rate) << c.fps;
    EXPECT_EQ(_writer._streamInfo.dwScale, c.scale) << c.fps;
    _writer.End();
  }
  Result<void> still = Open("still.avi", 64, 48, DataDictionary(), 0);
  EXPECT_EQ(_writer._streamInfo.dwRate, 0u);
  EXPECT_EQ(_writer._streamInfo.dwScale, 1000000u);
  EXPECT_TRUE(still.IsError()) << "a stream without a rate is refused by the platform";
}

TEST_F(AviExportTest, WithoutAStoredChoiceRawI420IsWrittenAtItsDataRate) {
  ASSERT_FALSE(Open("default.avi", 64, 48, DataDictionary()).IsError());
  EXPECT_EQ(_writer._options.fccHandler, IYUV);
  EXPECT_EQ(_writer._options.dwQuality, 10000u);
  EXPECT_EQ(_writer._options.dwKeyFrameEvery, 0u);
  EXPECT_EQ(_writer._options.dwBytesPerSecond, 800000u);
  EXPECT_EQ(_writer._options.dwFlags, DWORD(AVICOMPRESSF_VALID | AVICOMPRESSF_DATARATE));
}

TEST_F(AviExportTest, AStoredChoiceGivesItsCompressorQualityAndFlags) {
  DataDictionary settings;
  ASSERT_FALSE(settings.Set(g_settingAviType, Int32(ICTYPE_VIDEO)).IsError());
  ASSERT_FALSE(settings.Set(g_settingAviHandler, Int32(MJPG)).IsError());
  ASSERT_FALSE(settings.Set(g_saverSettingQuality, Float64(0.75)).IsError());
  ASSERT_FALSE(Open("plain.avi", 64, 48, settings).IsError());
  EXPECT_EQ(_writer._options.fccHandler, MJPG);
  EXPECT_EQ(_writer._options.dwQuality, 7500u);
  EXPECT_EQ(_writer._options.dwFlags, DWORD(AVICOMPRESSF_VALID)) << "no key frames, no data rate";
  EXPECT_EQ(_writer._options.cbParms, 0u);
  _writer.End();

  Array<Char> state;
  ASSERT_TRUE(state.MakeWritable()->Append("abc", 3));
  ASSERT_FALSE(settings.Set(g_saverSettingKeyframes, Int32(12)).IsError());
  ASSERT_FALSE(settings.Set(g_saverSettingDatarate, BytesValue{50000}).IsError());
  ASSERT_FALSE(settings.Set(g_saverSettingCustomdata, state).IsError());
  ASSERT_FALSE(Open("rated.avi", 64, 48, settings).IsError());
  EXPECT_EQ(_writer._options.dwKeyFrameEvery, 12u);
  EXPECT_EQ(_writer._options.dwBytesPerSecond, 50000u);
  EXPECT_EQ(_writer._options.dwFlags, DWORD(AVICOMPRESSF_VALID | AVICOMPRESSF_KEYFRAMES | AVICOMPRESSF_DATARATE));
  ASSERT_EQ(_writer._options.cbParms, 3u);
  EXPECT_EQ(std::string(static_cast<const char*>(_writer._options.lpParms), 3), "abc");
}

TEST_F(AviExportTest, AFileAtTheOutputIsReplacedButADirectoryIsNot) {
  { std::ofstream(PathFor("old.avi")) << "not a movie"; }
  ASSERT_FALSE(Open("old.avi", 64, 48, DataDictionary()).IsError());
  _writer.End();
  EXPECT_EQ(StreamsInFile(PathFor("old.avi")), 1) << "a new movie stands in its place";

  std::filesystem::create_directories(PathFor("folder.avi"));
  EXPECT_TRUE(Open("folder.avi", 64, 48, DataDictionary()).IsError());
  EXPECT_TRUE(std::filesystem::is_directory(PathFor("folder.avi")));
}

// Sound of channels, 16 bits at 8000 Hz, samples long.
AudioObject Sound(Int channels, Int samples) {
  Result<AudioObject> made = CreateObjectOf<AudioObjectInterface>(g_audioObjects, VORNA_SOURCE_LOCATION);
  EXPECT_FALSE(made.IsError());
  EXPECT_FALSE(made.GetValue().Init(channels, 16, 8000, samples).IsError());
  return made.GetValue();
}

// Rows of a grey picture for the writer; a fetch of row failAt fails.
GetPixelsDelegate GreyRows(Int failAt = -1) {
  GetPixelsDelegate getPixels;
  EXPECT_FALSE(getPixels.Set([failAt](const PixelFormat&) -> Result<GetPixelHandlerStruct<>> {
    GetPixelHandlerStruct<> handler;
    VORNA_RETURN_ON_ERROR(handler.getLine.Set([failAt](const LineRange& region, const LineDestination& to, Int) -> Result<void> {
      if (region.y == failAt) return RaiseError(g_IllegalStateErrorObject, VORNA_SOURCE_LOCATION);
      std::fill(to.pixels, to.pixels + 3 * region.count, UChar(128));
      return OK;
    }));
    return handler;
  }).IsError());
  return getPixels;
}

TEST_F(AviExportTest, SoundOfMoreThanTwoChannelsOrNoSamplesIsLeftOut) {
  struct Case {
    const char* name;
    Int channels, samples, streams;
  } cases[] = {{"stereo.avi", 2, 800, 2}, {"three.avi", 3, 800, 1}, {"empty.avi", 2, 0, 1}};
  for (const Case& c : cases) {
    ASSERT_FALSE(Open(c.name, 64, 48, DataDictionary()).IsError());
    AudioObject sound = Sound(c.channels, c.samples);
    EXPECT_FALSE(_writer.WriteAudio(sound).IsError()) << c.name;
    ASSERT_FALSE(_writer.WriteFrame(TimeValue(), TimeValue(0.04), true, GreyRows()).IsError());
    _writer.End();
    EXPECT_EQ(StreamsInFile(PathFor(c.name)), c.streams) << c.name;
  }
}

TEST_F(AviExportTest, AFailedLineFetchWritesNoFrameAndKeepsTheCount) {
  ASSERT_FALSE(Open("frames.avi", 64, 48, DataDictionary()).IsError());
  ASSERT_FALSE(_writer.WriteFrame(TimeValue(), TimeValue(0.04), true, GreyRows()).IsError());
  EXPECT_EQ(_writer._frame, 1u);
  Result<void> failed = _writer.WriteFrame(TimeValue(), TimeValue(0.04), true, GreyRows(20));
  EXPECT_TRUE(IsErrorOfClass(failed.GetError(), g_IllegalStateErrorObject));
  EXPECT_EQ(_writer._frame, 1u);
  ASSERT_FALSE(_writer.WriteFrame(TimeValue(), TimeValue(0.04), true, GreyRows()).IsError());
  EXPECT_EQ(_writer._frame, 2u);
}

// A chooser as a user: it records what it was shown and answers as told.
struct ScriptedChooser {
  BOOL confirm = TRUE;
  std::vector<std::string> codes;  // of the compressors offered
  TesselChooserRequest request{};
  std::vector<char> shownState;
  LONG quality = -1;  // >= 0: the user changes the quality to this
  const char* state = nullptr;  // the state the chosen compressor gives back

  static BOOL Choose(void* context, const TesselChooserRequest* request, TesselCompressorChoice* choice) {
    auto* self = static_cast<ScriptedChooser*>(context);
    self->request = *request;
    self->shownState.assign(static_cast<const char*>(request->preselection.state),
                            static_cast<const char*>(request->preselection.state) + request->preselection.stateSize);
    if (self->quality >= 0) choice->quality = self->quality;
    if (self->state) {
      choice->state = self->state;
      choice->stateSize = LONG(std::strlen(self->state));
    }
    return self->confirm;
  }
  void Install() { TesselPlatformSetCompressorChooser(&ScriptedChooser::Choose, this); }
};

GetWindowDelegate NoWindow() {
  GetWindowDelegate window;
  EXPECT_FALSE(window.Set([]() -> Result<void*> { return nullptr; }).IsError());
  return window;
}

TEST_F(AviExportTest, WithoutAStoredChoiceTheChooserOpensOnRawI420) {
  ScriptedChooser user;
  user.Install();
  DataDictionary settings;
  Result<Bool> chosen = ChooseAviCompressor(settings, NoWindow());
  ASSERT_FALSE(chosen.IsError());
  EXPECT_TRUE(chosen.GetValue());
  EXPECT_EQ(user.request.preselection.fccHandler, IYUV);
  EXPECT_EQ(user.request.preselection.quality, 10000);
  EXPECT_EQ(user.request.preselection.keyFrameEvery, 10);
  EXPECT_EQ(user.request.preselection.dataRate, 0);
  EXPECT_EQ(user.request.flags, UINT(ICMF_CHOOSE_KEYFRAME | ICMF_CHOOSE_DATARATE | ICMF_CHOOSE_ALLCOMPRESSORS));
  EXPECT_STREQ(user.request.title, "Compressor");
  EXPECT_EQ(settings.Get<Int32>(g_settingAviType, 0), Int32(ICTYPE_VIDEO));
  EXPECT_EQ(settings.Get<Int32>(g_settingAviHandler, 0), Int32(IYUV));
  EXPECT_EQ(settings.Get<Float64>(g_saverSettingQuality, 0), 1.0);
  EXPECT_EQ(settings.Get<Int32>(g_saverSettingKeyframes, 0), 10);
  Result<Array<Char>> state = settings.Get<Array<Char>>(g_saverSettingCustomdata);
  ASSERT_FALSE(state.IsError()) << "a compressor without state stores an empty array";
  EXPECT_EQ(state.GetValue().GetCount(), 0);
}

TEST_F(AviExportTest, AStoredChoiceComesBackAsItWasShown) {
  DataDictionary settings;
  Array<Char> state;
  ASSERT_TRUE(state.MakeWritable()->Append("xy", 2));
  ASSERT_FALSE(settings.Set(g_settingAviType, Int32(ICTYPE_VIDEO)).IsError());
  ASSERT_FALSE(settings.Set(g_settingAviHandler, Int32(MJPG)).IsError());
  ASSERT_FALSE(settings.Set(g_saverSettingQuality, Float64(0.75)).IsError());
  ASSERT_FALSE(settings.Set(g_saverSettingDatarate, BytesValue{1500}).IsError());
  ASSERT_FALSE(settings.Set(g_saverSettingCustomdata, state).IsError());
  ScriptedChooser user;
  user.state = "xyz";
  user.Install();
  ASSERT_TRUE(ChooseAviCompressor(settings, NoWindow()).GetValue());
  EXPECT_EQ(user.request.preselection.fccHandler, MJPG);
  EXPECT_EQ(user.request.preselection.quality, 7500);
  EXPECT_EQ(user.request.preselection.dataRate, 1) << "1500 bytes show as 1 kilobyte";
  EXPECT_EQ(std::string(user.shownState.begin(), user.shownState.end()), "xy");
  EXPECT_EQ(settings.Get<Float64>(g_saverSettingQuality, 0), 0.75) << "7500 comes back exactly";
  EXPECT_EQ(settings.Get<BytesValue>(g_saverSettingDatarate, BytesValue{}).bytes, 1000);
  Block<const Char> stored = settings.Get<Array<Char>>(g_saverSettingCustomdata, Array<Char>()).ToBlock();
  EXPECT_EQ(std::string(stored.data, size_t(stored.count)), "xyz");
}

TEST_F(AviExportTest, ACancelledOrMissingChooserLeavesTheSettings) {
  DataDictionary settings;
  ASSERT_FALSE(settings.Set(g_saverSettingQuality, Float64(0.5)).IsError());
  for (Bool installed : {true, false}) {
    ScriptedChooser user;
    user.confirm = FALSE;
    user.quality = 100;
    if (installed) user.Install();
    Result<Bool> chosen = ChooseAviCompressor(settings, NoWindow());
    ASSERT_FALSE(chosen.IsError());
    EXPECT_FALSE(chosen.GetValue());
    EXPECT_EQ(settings.GetCount(), 1);
    EXPECT_EQ(settings.Get<Float64>(g_saverSettingQuality, 0), 0.5);
    TesselPlatformSetCompressorChooser(nullptr, nullptr);
  }
}

TEST_F(AviExportTest, WindowAndMemoryFailuresEndTheChoice) {
  ScriptedChooser user;
  user.Install();
  DataDictionary settings;
  GetWindowDelegate noDesktop;
  ASSERT_FALSE(noDesktop.Set([]() -> Result<void*> { return RaiseError(g_UnsupportedOperationErrorObject, VORNA_SOURCE_LOCATION); }).IsError());
  EXPECT_TRUE(IsErrorOfClass(ChooseAviCompressor(settings, noDesktop).GetError(), g_UnsupportedOperationErrorObject));

  Array<Char> state;
  ASSERT_TRUE(state.MakeWritable()->Append("xy", 2));
  ASSERT_FALSE(settings.Set(g_settingAviType, Int32(ICTYPE_VIDEO)).IsError());
  ASSERT_FALSE(settings.Set(g_saverSettingCustomdata, state).IsError());
  TesselPlatformFailNextGlobalAlloc(ERROR_NOT_ENOUGH_MEMORY);
  Result<Bool> chosen = ChooseAviCompressor(settings, NoWindow());
  EXPECT_TRUE(IsErrorOfClass(chosen.GetError(), g_OutOfMemoryErrorObject));
  EXPECT_EQ(user.request.title, nullptr) << "the chooser never opened";
  TesselPlatformFailNextGlobalAlloc(0);
}

}  // namespace
}  // namespace tessel
