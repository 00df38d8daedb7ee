// The import compiled into the test: the reading session finds the test's own copy of
// the file formats and loaders, so that stream components, the session and the
// analysis itself can be reached directly.
#include <gtest/gtest.h>

#include <mfapi.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "fixtures.h"
#include "forwarding_source_reader.h"
#include "host_environment.h"
#include "import_loaders.h"
#include "import_streams.h"
#include "media_win_mf.h"
#include "mf_format_maps.h"
#include "stream_analysis.h"
#include "tessel_platform_control.h"
#include "vorna/extensionpoint.h"
#include "vorna/fileformat.h"
#include "vorna/mediasession_keys.h"
#include "vorna/referencedata.h"
#include "vorna_session.h"

namespace tessel {
namespace {

using namespace vorna;
using vorna::host::ReadingSession;

Url ClipUrl(std::string_view name) {
  Url url;
  EXPECT_FALSE(url.Set(fixtures::Path(name).c_str()).IsError());
  return url;
}

std::string MessageOf(ErrorWord error) {
  Result<CString> text = ErrorOf(error).GetMessage().GetCString();
  return text.IsError() ? std::string() : text.GetValue().GetCString();
}

std::vector<Int64> FormatKeys(const MediaStream& stream) {
  std::vector<Int64> keys;
  Result<BaseArray<Data>> ids = stream.GetFormats();
  if (!ids.IsError())
    for (const Data& id : ids.GetValue()) keys.push_back(GetDataValue<Int64>(id).GetValue());
  return keys;
}

template <typename T>
T Property(const MediaStream& stream, Int64 key, InternedId& property) {
  Result<T> value = stream.GetFormat(MakeData(key)).Get<T>(property);
  EXPECT_FALSE(value.IsError()) << (*property).GetCString();
  return value.GetValue();
}

std::string PixelFormatName(const MediaStream& stream, Int64 key) {
  Result<Data> data = stream.GetFormat(MakeData(key)).GetData(g_mediaFormatImagePixelformat);
  StrongRef<PixelFormatInterface> format = GetObjectFromData<PixelFormatInterface>(&data.GetValue());
  return format ? format.GetShortName().GetCString() : "null";
}

struct Size {
  Int64 width;
  Int64 height;
  bool operator==(const Size&) const = default;
};

Size PublishedSize(const MediaStream& stream, Int64 key) {
  return {Property<Int64>(stream, key, g_mediaFormatImageWidth), Property<Int64>(stream, key, g_mediaFormatImageHeight)};
}

MediaStreamMovieStreamWinMFImportImpl& MovieStream(const MediaStream& stream) {
  auto* component = GetComponent<MediaStreamMovieStreamWinMFImportImpl>(stream);
  EXPECT_NE(component, nullptr);
  return *component;
}

// The frame size of the reader's current type of a stream.
Size ReaderFrameSize(const MediaStreamMovieStreamWinMFImportImpl& stream) {
  IMFMediaType* current = nullptr;
  EXPECT_EQ(stream._session->reader->GetCurrentMediaType(stream._streamIndex, &current), S_OK);
  UINT32 width = 0, height = 0;
  EXPECT_EQ(MFGetAttributeSize(current, MF_MT_FRAME_SIZE, &width, &height), S_OK);
  current->Release();
  return {width, height};
}

class ImportTest : public ::testing::Test {
 protected:
  void TearDown() override {
    g_mediaFoundationUseMSUrlReader = false;
    g_mediaFoundationDisableHardwareYUVtoRGB = false;
    TesselPlatformSetWindowsVersion(10, 0, 0);
    TesselPlatformRefuseAdvancedVideoProcessing(0);
  }

  static std::unique_ptr<ReadingSession> Open(std::string_view clip) {
    Result<std::unique_ptr<ReadingSession>> opened = ReadingSession::Open(ClipUrl(clip));
    EXPECT_FALSE(opened.IsError()) << clip << ": " << MessageOf(opened.GetError());
    return opened.IsError() ? nullptr : std::move(opened.GetValue());
  }

  static Result<Bool> OpenAdvanced(std::string_view clip) {
    Result<SessionRef> session = SessionRef::Create();
    VORNA_RETURN_ON_ERROR(session);
    VORNA_RETURN_ON_ERROR(OpenSource(*session.GetValue(), ClipUrl(clip)));
    return session.GetValue()->advancedProcessing;
  }
};

// --- Opening ---------------------------------------------------------------------

TEST_F(ImportTest, TheSwitchesAndTheSystemVersionDecideOnAdvancedProcessingAtEachOpen) {
  EXPECT_TRUE(OpenAdvanced(fixtures::kMovieAac.name).GetValue());
  TesselPlatformSetWindowsVersion(6, 1, 0);
  EXPECT_FALSE(OpenAdvanced(fixtures::kMovieAac.name).GetValue()) << "Windows 7";
  TesselPlatformSetWindowsVersion(6, 2, 0);
  EXPECT_TRUE(OpenAdvanced(fixtures::kMovieAac.name).GetValue()) << "Windows 8";
  g_mediaFoundationDisableHardwareYUVtoRGB = true;
  EXPECT_FALSE(OpenAdvanced(fixtures::kMovieAac.name).GetValue());
  g_mediaFoundationDisableHardwareYUVtoRGB = false;
  TesselPlatformRefuseAdvancedVideoProcessing(E_NOTIMPL);
  Result<Bool> fallback = OpenAdvanced(fixtures::kMovieAac.name);
  ASSERT_FALSE(fallback.IsError()) << "a refused advanced reader falls back silently";
  EXPECT_FALSE(fallback.GetValue());
}

TEST_F(ImportTest, ARefusedSourceFailsWithThePlainAttemptsStatusAndKeepsNoReader) {
  int64_t readers = TesselPlatformGetCounters().liveSourceReaders;
  Result<SessionRef> session = SessionRef::Create();
  ASSERT_FALSE(session.IsError());
  Result<void> opened = OpenSource(*session.GetValue(), ClipUrl(fixtures::kText));
  ASSERT_TRUE(opened.IsError());
  EXPECT_TRUE(IsErrorOfClass(opened.GetError(), g_IllegalStateErrorObject));
  EXPECT_EQ(MessageOf(opened.GetError()).rfind("Error 0x", 0), 0u) << MessageOf(opened.GetError());
  EXPECT_EQ(session.GetValue()->reader, nullptr);
  EXPECT_EQ(TesselPlatformGetCounters().liveSourceReaders, readers);
}

TEST_F(ImportTest, AMemoryUrlIsReadThroughTheByteStreamWhileTheUrlReaderNeedsASystemPath) {
  std::ifstream file(fixtures::Path(fixtures::kMovieAac.name), std::ios::binary);
  vorna::host::RegisterMemoryBlob("import-test/movie.mp4",
                                  {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()});
  Url url;
  ASSERT_FALSE(url.Set("memory://import-test/movie.mp4").IsError());
  Result<SessionRef> session = SessionRef::Create();
  ASSERT_FALSE(OpenSource(*session.GetValue(), url).IsError());
  EXPECT_NE(session.GetValue()->reader, nullptr);

  g_mediaFoundationUseMSUrlReader = true;
  Result<void> opened = OpenSource(*session.GetValue(), url);
  ASSERT_TRUE(opened.IsError());
  EXPECT_TRUE(IsErrorOfClass(opened.GetError(), g_UnsupportedOperationErrorObject)) << MessageOf(opened.GetError());
  EXPECT_EQ(session.GetValue()->reader, nullptr) << "no fall back to the byte stream";
  vorna::host::UnregisterMemoryBlob("import-test/movie.mp4");
}

TEST_F(ImportTest, BothWaysOfOpeningAFileGiveTheSameStreams) {
  g_mediaFoundationUseMSUrlReader = true;
  std::unique_ptr<ReadingSession> byUrl = Open(fixtures::kAnamorphicPal.name);
  g_mediaFoundationUseMSUrlReader = false;
  std::unique_ptr<ReadingSession> byStream = Open(fixtures::kAnamorphicPal.name);
  ASSERT_TRUE(byUrl && byStream);
  EXPECT_EQ(FormatKeys(byUrl->GetStreams()[0]), FormatKeys(byStream->GetStreams()[0]));
  EXPECT_EQ(PublishedSize(byUrl->GetStreams()[0], -1), PublishedSize(byStream->GetStreams()[0], -1));
}

// --- Detection -------------------------------------------------------------------

TEST_F(ImportTest, SoundOnlyFilesAreClaimedByTheAudioFormatOnly) {
  for (const char* clip : {fixtures::kAudioMp3, fixtures::kWav24}) {
    std::unique_ptr<ReadingSession> session = Open(clip);
    ASSERT_TRUE(session);
    EXPECT_EQ(session->GetDetectedFormats(), std::vector<std::string>{"audio.winmf"}) << clip;
    EXPECT_EQ(session->GetHandler(), "audio.winmf");
  }
}

TEST_F(ImportTest, UnreadableAndMissingFilesAreNotClaimedAndNoErrorComesOut) {
  const Data* entry = ExtensionPoint::FindEntry(ExtensionPoint::Find(Id("vorna.FileFormats")), Id("movie.winmf"));
  StrongRef<FileFormatInterface> movie = GetObjectFromData<FileFormatInterface>(entry);
  ASSERT_TRUE(movie);
  for (const char* clip : {fixtures::kText, fixtures::kEmpty, "no_such_clip.mp4"}) {
    Result<Bool> claimed = movie.Detect(ClipUrl(clip));
    EXPECT_FALSE(claimed.IsError()) << clip;
    EXPECT_FALSE(claimed.GetValue()) << clip;
  }
}

TEST_F(ImportTest, MovieDetectionOfSoundGivesTheWrongTypeErrorAndAudioDetectionOfAPictureSucceeds) {
  Result<SessionRef> session = SessionRef::Create();
  Result<void> movie = AnalyzeSource(*session.GetValue(), ClipUrl(fixtures::kAudioMp3), MediaConverterInterface(),
                                     true, false, false);
  EXPECT_TRUE(IsErrorOfClass(movie.GetError(), g_MediaSessionWrongTypeErrorObject));
  Result<void> audio = AnalyzeSource(*session.GetValue(), ClipUrl(fixtures::kNtscRate.name), MediaConverterInterface(),
                                     false, true, true);
  EXPECT_FALSE(audio.IsError()) << "a file without sound opens, and that is enough";
}

// --- Published streams and formats --------------------------------------------------

TEST_F(ImportTest, AMoviePublishesItsPictureAndSoundWithTheirFormats) {
  tessel::testing::Console::Clear();
  std::unique_ptr<ReadingSession> session = Open(fixtures::kMovieAac.name);
  ASSERT_TRUE(session);
  ASSERT_EQ(session->GetStreams().GetCount(), 2);
  const MediaStream& video = session->GetStreams()[0];
  EXPECT_EQ(FormatKeys(video), std::vector<Int64>{1}) << "square pixels have no variant";
  EXPECT_EQ(Property<UInt32>(video, 1, g_mediaFormatImageType), 1u);
  EXPECT_EQ(Property<Int64>(video, 1, g_mediaFormatImageSubimageindex), 0);
  EXPECT_EQ(PixelFormatName(video, 1), "vorna.PixelFormats.BGRX:u8");
  EXPECT_EQ(PublishedSize(video, 1), (Size{320, 240}));
  EXPECT_EQ(Property<Float64>(video, 1, g_mediaFormatImageAspectratio), 1.0);
  EXPECT_EQ(Property<Float64>(video, 1, g_mediaFormatVideoFps), 25.0);
  EXPECT_EQ(Property<TimeValue>(video, 1, g_mediaFormatVideoStarttime).GetSeconds(), TIMEVALUE_MINUSINFINITE);
  EXPECT_NEAR(Property<TimeValue>(video, 1, g_mediaFormatVideoDuration).GetSeconds(), 2.0, 0.05);

  const MediaStream& audio = session->GetStreams()[1];
  EXPECT_EQ(FormatKeys(audio), std::vector<Int64>{0});
  EXPECT_EQ(Property<Int64>(audio, 0, g_mediaFormatAudioChannelcount), 2);
  EXPECT_EQ(Property<Int64>(audio, 0, g_mediaFormatAudioBitsperchannel), 16) << "AAC states no depth";
  EXPECT_EQ(Property<Float64>(audio, 0, g_mediaFormatAudioSamplerate), 48000.0);
  EXPECT_NE(tessel::testing::Console::Text().find("majorType: MFMediaType_Audio, subType: MFAudioFormat_AAC, 48000, 2, "),
            std::string::npos)
      << tessel::testing::Console::Text();
}

TEST_F(ImportTest, AnamorphicStreamsAddASquarePixelVariantUnderTheNegativeKey) {
  std::unique_ptr<ReadingSession> pal = Open(fixtures::kAnamorphicPal.name);
  ASSERT_TRUE(pal);
  const MediaStream& palStream = pal->GetStreams()[0];
  EXPECT_EQ(FormatKeys(palStream), (std::vector<Int64>{1, -1}));
  EXPECT_EQ(PublishedSize(palStream, 1), (Size{720, 576}));
  EXPECT_DOUBLE_EQ(Property<Float64>(palStream, 1, g_mediaFormatImageAspectratio), 16.0 / 15.0);
  EXPECT_EQ(PublishedSize(palStream, -1), (Size{768, 576})) << "wide pixels widen the picture";
  EXPECT_EQ(Property<Float64>(palStream, -1, g_mediaFormatImageAspectratio), 1.0);
  EXPECT_EQ(PixelFormatName(palStream, -1), PixelFormatName(palStream, 1));

  std::unique_ptr<ReadingSession> ntsc = Open(fixtures::kAnamorphicNtsc.name);
  ASSERT_TRUE(ntsc);
  EXPECT_EQ(PublishedSize(ntsc->GetStreams()[0], -1), (Size{720, 540})) << "narrow pixels heighten it";
}

TEST_F(ImportTest, AQuarterTurnSwapsThePublishedSidesAndInvertsTheAspect) {
  for (const auto* clip : {&fixtures::kRotated90, &fixtures::kRotated270}) {
    std::unique_ptr<ReadingSession> session = Open(clip->name);
    ASSERT_TRUE(session);
    EXPECT_EQ(PublishedSize(session->GetStreams()[0], 1), (Size{160, 240})) << clip->name;
    EXPECT_EQ(FormatKeys(session->GetStreams()[0]), std::vector<Int64>{1});
  }
  std::unique_ptr<ReadingSession> halfTurn = Open(fixtures::kRotated180.name);
  ASSERT_TRUE(halfTurn);
  EXPECT_EQ(PublishedSize(halfTurn->GetStreams()[0], 1), (Size{240, 160}));

  tessel::testing::Console::Clear();
  std::unique_ptr<ReadingSession> anamorphic = Open(fixtures::kAnamorphicRotated90.name);
  ASSERT_TRUE(anamorphic);
  const MediaStream& stream = anamorphic->GetStreams()[0];
  EXPECT_EQ(PublishedSize(stream, 1), (Size{160, 240}));
  EXPECT_DOUBLE_EQ(Property<Float64>(stream, 1, g_mediaFormatImageAspectratio), 0.75);
  EXPECT_EQ(PublishedSize(stream, -1), (Size{160, 320}));
  EXPECT_EQ(Property<Float64>(stream, -1, g_mediaFormatImageAspectratio), 1.0);
  EXPECT_DOUBLE_EQ(MovieStream(stream)._pixelAspectRatio, 4.0 / 3.0) << "the field keeps the source's aspect";
  EXPECT_EQ(MovieStream(stream)._rotation, 90);
  EXPECT_NE(tessel::testing::Console::Text().find("Video rotation found: 90"), std::string::npos);
}

TEST_F(ImportTest, PcmIsAskedForAtItsDepthAndThirtyTwoBitsAsFloat) {
  struct Case {
    const char* clip;
    GUID subtype;
    UINT32 bits;
  };
  for (const Case& c : {Case{fixtures::kWav16, MFAudioFormat_PCM, 16}, Case{fixtures::kWav24, MFAudioFormat_PCM, 24},
                        Case{fixtures::kWav32, MFAudioFormat_Float, 32}, Case{fixtures::kMovieAac.name, MFAudioFormat_PCM, 16}}) {
    std::unique_ptr<ReadingSession> session = Open(c.clip);
    ASSERT_TRUE(session);
    const MediaStream& audio = session->GetStreams()[session->GetStreams().GetCount() - 1];
    EXPECT_EQ(Property<Int64>(audio, 0, g_mediaFormatAudioBitsperchannel), Int64(c.bits)) << c.clip;
    auto* component = GetComponent<MediaStreamAudioStreamWinMFImportImpl>(audio);
    ASSERT_NE(component, nullptr);
    IMFMediaType* current = nullptr;
    ASSERT_EQ(component->_session->reader->GetCurrentMediaType(component->_streamIndex, &current), S_OK);
    GUID subtype{};
    current->GetGUID(MF_MT_SUBTYPE, &subtype);
    EXPECT_EQ(subtype, c.subtype) << c.clip;
    EXPECT_EQ(MFGetAttributeUINT32(current, MF_MT_AUDIO_BITS_PER_SAMPLE, 0), c.bits) << c.clip;
    EXPECT_EQ(MFGetAttributeUINT32(current, MF_MT_AUDIO_SAMPLES_PER_SECOND, 0), 48000u) << c.clip;
    current->Release();
  }
}

// --- Loaders -----------------------------------------------------------------------

TEST_F(ImportTest, TheAudioLoaderOfAMoviePublishesOnlyItsSound) {
  std::unique_ptr<ReadingSession> movie = Open(fixtures::kMultiStream.name);
  ASSERT_TRUE(movie);
  EXPECT_EQ(movie->GetStreams().GetCount(), 3);
  EXPECT_TRUE(movie->GetLoader().Get<Bool>(g_mediaInputSupportsVideo).GetValue());
  EXPECT_TRUE(movie->GetLoader().Get<Bool>(g_mediaInputSupportsImage).GetValue());

  const Data* entry = ExtensionPoint::FindEntry(ExtensionPoint::Find(Id("vorna.FileFormatHandlers")), Id("audio.winmf"));
  StrongRef<FileFormatHandlerInterface> handler = GetObjectFromData<FileFormatHandlerInterface>(entry);
  ASSERT_TRUE(handler);
  Result<ObjectRef> made = handler.CreateHandler(ClipUrl(fixtures::kMovieAac.name));
  ASSERT_FALSE(made.IsError());
  MediaConverter loader(Cast<MediaConverterInterface>(made.GetValue()));
  ASSERT_FALSE(loader.Analyze({}, 0, 0).IsError());
  EXPECT_EQ(loader.GetOutputStreams(0).GetValue().GetCount(), 1);
  EXPECT_FALSE(loader.Get<Bool>(g_mediaInputSupportsVideo).GetValue());
  EXPECT_FALSE(loader.Get<Bool>(g_mediaInputSupportsImage).GetValue());
  EXPECT_TRUE(loader.Get<Bool>(g_mediaInputSupportsAudio).GetValue());
  EXPECT_EQ(loader.SupportImportStrategy(), 1);
  EXPECT_FALSE(loader.Close({}).IsError());
}

TEST_F(ImportTest, ASecondAnalyzeAddsNothingAndCloseEndsTheLoadersUseOfTheSession) {
  int64_t readers = TesselPlatformGetCounters().liveSourceReaders;
  std::unique_ptr<ReadingSession> session = Open(fixtures::kMovieAac.name);
  ASSERT_TRUE(session);
  const MediaConverter& loader = session->GetLoader();
  ASSERT_FALSE(loader.Analyze({}, 0, 0).IsError());
  EXPECT_EQ(loader.GetOutputStreams(0).GetValue().GetCount(), 2);
  EXPECT_FALSE(loader.PrepareExecute({}, 0, 0).IsError());
  ObjectRef input(loader);
  EXPECT_TRUE(IsErrorOfClass(loader.Analyze({&input, 1}, 0, 0).GetError(), g_IllegalStateErrorObject));

  const MediaStreamMovieStreamWinMFImportImpl& stream = MovieStream(session->GetStreams()[0]);
  ASSERT_FALSE(loader.Close({}).IsError());
  ASSERT_FALSE(loader.Close({}).IsError()) << "twice is harmless";
  EXPECT_TRUE(IsErrorOfClass(loader.Analyze({}, 0, 0).GetError(), g_IllegalStateErrorObject));
  EXPECT_TRUE(IsErrorOfClass(loader.PrepareExecute({}, 0, 0).GetError(), g_IllegalStateErrorObject));
  EXPECT_NE(stream._session->reader, nullptr) << "the streams keep the reader";
  input.Reset();
  session.reset();
  EXPECT_EQ(TesselPlatformGetCounters().liveSourceReaders, readers) << "the last stream takes the reader with it";
}

// --- Preparation -------------------------------------------------------------------

TEST_F(ImportTest, PreparationCommitsToTheFirstCandidateAndSetsTheSeekWindow) {
  struct Case {
    fixtures::Clip clip;
    Int window;
  };
  for (const Case& c : {Case{fixtures::kMovieAac, 2000000}, Case{fixtures::kNtscRate, 1668333}}) {
    std::unique_ptr<ReadingSession> session = Open(c.clip.name);
    ASSERT_TRUE(session);
    MediaStreamMovieStreamWinMFImportImpl& stream = MovieStream(session->GetStreams()[0]);
    EXPECT_EQ(stream._maxSeekDifference, 5000000) << "half a second until prepared";
    ASSERT_FALSE(PrepareVideoStream(stream, *stream._session, false).IsError());
    EXPECT_TRUE(stream._prepared);
    EXPECT_EQ(stream._maxSeekDifference, c.window) << c.clip.name;
    EXPECT_DOUBLE_EQ(stream._frameRate, Float64(c.clip.rateNumerator) / c.clip.rateDenominator);
    EXPECT_EQ(stream._width, 320);
    EXPECT_EQ(stream._height, 240);
    EXPECT_EQ(stream._defaultStride, 320 * 4);
    EXPECT_STREQ(stream._pixelFormat.GetShortName().GetCString(), "vorna.PixelFormats.BGRX:u8");
    EXPECT_NEAR(stream._duration.GetSeconds(), Float64(c.clip.frames) * c.clip.rateDenominator / c.clip.rateNumerator,
                0.05);
  }
}

TEST_F(ImportTest, SquarePixelsAreDeliveredAtTheSizeOfTheNegativeFormat) {
  std::unique_ptr<ReadingSession> session = Open(fixtures::kAnamorphicPal.name);
  ASSERT_TRUE(session);
  MediaStreamMovieStreamWinMFImportImpl& stream = MovieStream(session->GetStreams()[0]);
  ASSERT_FALSE(PrepareVideoStream(stream, *stream._session, true).IsError());
  EXPECT_EQ((Size{stream._width, stream._height}), PublishedSize(session->GetStreams()[0], -1));
  EXPECT_EQ(ReaderFrameSize(stream), (Size{768, 576}));
  EXPECT_EQ(stream._defaultStride, 768 * 4);
}

TEST_F(ImportTest, ATurnedStreamIsReadOnItsSideAtTheSizeOfTheSelectedFormat) {
  std::unique_ptr<ReadingSession> plain = Open(fixtures::kRotated90.name);
  ASSERT_TRUE(plain);
  MediaStreamMovieStreamWinMFImportImpl& turned = MovieStream(plain->GetStreams()[0]);
  ASSERT_FALSE(PrepareVideoStream(turned, *turned._session, false).IsError());
  EXPECT_EQ((Size{turned._width, turned._height}), (Size{160, 240}));
  EXPECT_EQ(ReaderFrameSize(turned), (Size{240, 160})) << "the native size fits without a new type";
  EXPECT_LT(turned._pixelFormat.GetPackedPixelCount(), 2);

  std::unique_ptr<ReadingSession> anamorphic = Open(fixtures::kAnamorphicRotated90.name);
  ASSERT_TRUE(anamorphic);
  MediaStreamMovieStreamWinMFImportImpl& stream = MovieStream(anamorphic->GetStreams()[0]);
  ASSERT_FALSE(PrepareVideoStream(stream, *stream._session, true).IsError());
  EXPECT_EQ((Size{stream._width, stream._height}), PublishedSize(anamorphic->GetStreams()[0], -1));
  // The transfer walks `_width` rows of `_height` pixels of the reader's frame.
  EXPECT_EQ(ReaderFrameSize(stream), (Size{stream._height, stream._width}));
  EXPECT_GE(stream._defaultStride, stream._height * 4);
}

TEST_F(ImportTest, WithoutAdvancedProcessingSquarePixelsFailWithTheFirstRefusal) {
  g_mediaFoundationDisableHardwareYUVtoRGB = true;
  std::unique_ptr<ReadingSession> session = Open(fixtures::kAnamorphicPal.name);
  ASSERT_TRUE(session);
  MediaStreamMovieStreamWinMFImportImpl& stream = MovieStream(session->GetStreams()[0]);
  Result<void> prepared = PrepareVideoStream(stream, *stream._session, true);
  ASSERT_TRUE(prepared.IsError());
  EXPECT_EQ(MessageOf(prepared.GetError()).rfind("Error 0x", 0), 0u) << MessageOf(prepared.GetError());
  EXPECT_FALSE(stream._prepared);
  ASSERT_FALSE(PrepareVideoStream(stream, *stream._session, false).IsError()) << "the native size needs no scaling";
  EXPECT_EQ((Size{stream._width, stream._height}), (Size{720, 576}));
}

TEST_F(ImportTest, TheStrideComesFromTheTypeOrElseFromItsSubtypeAndWidth) {
  IMFMediaType* type = nullptr;
  ASSERT_EQ(MFCreateMediaType(&type), S_OK);
  type->SetGUID(MF_MT_SUBTYPE, MFVideoFormat_RGB24);
  MFSetAttributeSize(type, MF_MT_FRAME_SIZE, 101, 10);
  EXPECT_EQ(GetDefaultStrideFromType(type).GetValue(), -304) << "bitmap rows: bottom-up, padded to four bytes";
  type->SetUINT32(MF_MT_DEFAULT_STRIDE, UINT32(-1280));
  EXPECT_EQ(GetDefaultStrideFromType(type).GetValue(), -1280) << "bottom-up rows";
  type->DeleteAllItems();
  EXPECT_TRUE(GetDefaultStrideFromType(type).IsError());
  type->Release();
}


// --- Native types the platform's reader doesn't offer -------------------------------

// A movie loader of the anamorphic clip whose reader, once open, is wrapped in a
// forwarding reader set up by configure; the analysis then walks the wrapper.
class WrappedReaderTest : public ImportTest {
 protected:
  template <typename CONFIGURE>
  void Analyze(CONFIGURE&& configure) {
    const Data* entry = ExtensionPoint::FindEntry(ExtensionPoint::Find(Id("vorna.FileFormatHandlers")), Id("movie.winmf"));
    StrongRef<FileFormatHandlerInterface> handler = GetObjectFromData<FileFormatHandlerInterface>(entry);
    ASSERT_TRUE(handler);
    Result<ObjectRef> made = handler.CreateHandler(ClipUrl(fixtures::kAnamorphicPal.name));
    ASSERT_FALSE(made.IsError());
    _loader = MediaConverter(Cast<MediaConverterInterface>(made.GetValue()));
    auto* component = GetComponent<MovieLoaderWinMFImpl>(_loader);
    ASSERT_NE(component, nullptr);
    MFReaderSession& session = *component->_session;
    ASSERT_FALSE(OpenSource(session, component->_url).IsError());
    auto* wrapper = tessel::testing::ForwardingSourceReader::Wrap(session.reader);
    session.reader = wrapper;
    configure(*wrapper);
    Result<void> analysed = AnalyzeOpenedSource(session, _loader, false, false, false);
    ASSERT_FALSE(analysed.IsError()) << MessageOf(analysed.GetError());
    Result<BaseArray<MediaStream>> streams = _loader.GetOutputStreams(0);
    ASSERT_FALSE(streams.IsError());
    ASSERT_GE(streams.GetValue().GetCount(), 1);
    _video = streams.GetValue()[0];
  }

  void TearDown() override {
    if (_loader) {
      EXPECT_FALSE(_loader.Close({}).IsError());
    }
    ImportTest::TearDown();
  }

  MediaConverter _loader;
  MediaStream _video;
};

TEST_F(WrappedReaderTest, FurtherNativeTypesPublishTheirOwnPixelFormatWithTheSizeRateAndLengthOfTypeZero) {
  Analyze([](tessel::testing::ForwardingSourceReader& reader) {
    reader.furtherTypes = {{MFMediaType_Video, MFVideoFormat_YUY2},
                           {MFMediaType_Video, MFVideoFormat_RGB24},
                           {MFMediaType_Audio, MFAudioFormat_PCM}};
  });
  ASSERT_TRUE(_video);
  std::vector<Int64> keys = FormatKeys(_video);
  std::sort(keys.begin(), keys.end());
  EXPECT_EQ(keys, (std::vector<Int64>{-3, -2, -1, 1, 2, 3})) << "the sound type of the stream gives no key";

  const Bool advanced = MovieStream(_video)._session->advancedProcessing;
  const std::pair<Int64, GUID> subtypes[] = {{1, MFVideoFormat_H264}, {2, MFVideoFormat_YUY2}, {3, MFVideoFormat_RGB24}};
  for (const auto& [key, subtype] : subtypes) {
    const std::string expected = SubtypeToPixelFormat(subtype, advanced).GetShortName().GetCString();
    EXPECT_EQ(PixelFormatName(_video, key), expected) << key;
    EXPECT_EQ(PixelFormatName(_video, -key), expected) << -key;
    EXPECT_EQ(PublishedSize(_video, key), (Size{720, 576})) << key;
    EXPECT_EQ(PublishedSize(_video, -key), (Size{768, 576})) << -key;
    EXPECT_EQ(Property<Float64>(_video, -key, g_mediaFormatImageAspectratio), 1.0) << -key;
    EXPECT_EQ(Property<Float64>(_video, key, g_mediaFormatVideoFps), 25.0) << key;
    EXPECT_EQ(Property<TimeValue>(_video, key, g_mediaFormatVideoDuration).GetSeconds(),
              Property<TimeValue>(_video, 1, g_mediaFormatVideoDuration).GetSeconds())
        << key;
  }
  EXPECT_NE(PixelFormatName(_video, 2), PixelFormatName(_video, 3));
  EXPECT_DOUBLE_EQ(Property<Float64>(_video, 1, g_mediaFormatImageAspectratio), 16.0 / 15.0);
  EXPECT_EQ(Property<TimeValue>(_video, 1, g_mediaFormatVideoStarttime).GetSeconds(), TIMEVALUE_MINUSINFINITE);
  for (Int64 key : {2, 3}) {
    auto format = _video.GetFormat(MakeData(key));
    EXPECT_TRUE(format.GetData(g_mediaFormatImageAspectratio).IsError()) << key;
    EXPECT_TRUE(format.GetData(g_mediaFormatVideoStarttime).IsError()) << key;
  }
}

TEST_F(WrappedReaderTest, AFrameRateOverZeroPublishesTheLargestRateAndPreparesAFiveSecondWindow) {
  Analyze([](tessel::testing::ForwardingSourceReader& reader) { reader.zeroRateDenominator = true; });
  ASSERT_TRUE(_video);
  EXPECT_EQ(Property<Float64>(_video, 1, g_mediaFormatVideoFps), 1.7976931348623157e308);
  EXPECT_EQ(Property<Float64>(_video, 1, g_mediaFormatVideoFps), std::numeric_limits<Float64>::max());
  MediaStreamMovieStreamWinMFImportImpl& stream = MovieStream(_video);
  ASSERT_FALSE(PrepareVideoStream(stream, *stream._session, false).IsError());
  EXPECT_EQ(stream._frameRate, 1.0);
  EXPECT_EQ(stream._maxSeekDifference, 50000000) << "five seconds in 100 ns ticks";
}

}  // namespace
}  // namespace tessel
