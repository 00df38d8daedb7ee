// Damaged, truncated, empty, foreign and absurd input: every failure is a status, every
// read loop ends, nothing leaks (the sanitizer builds check the last).
#include <gtest/gtest.h>

#include <string>

#include "fixtures.h"
#include "reader_support.h"
#include "tessel_platform_control.h"

namespace tessel::platform_test {
namespace {

using namespace tessel::fixtures;

struct OpenCase {
  const char* clip;
  HRESULT status;
};

class UnopenableInput : public ::testing::TestWithParam<OpenCase> {};

TEST_P(UnopenableInput, FailsWithItsStatus) {
  HRESULT hr = S_OK;
  auto reader = OpenReader(GetParam().clip, Processing::kAdvanced, &hr);
  EXPECT_EQ(hr, GetParam().status) << GetParam().clip;
  EXPECT_FALSE(reader);
}

INSTANTIATE_TEST_SUITE_P(Files, UnopenableInput,
                         ::testing::Values(OpenCase{kEmpty, MF_E_UNSUPPORTED_BYTESTREAM_TYPE},
                                           OpenCase{kText, MF_E_UNSUPPORTED_BYTESTREAM_TYPE},
                                           OpenCase{kTruncated, MF_E_UNSUPPORTED_BYTESTREAM_TYPE},
                                           OpenCase{"missing.mp4", HRESULT(0x80070002)}),
                         [](const auto& info) { return TestName(info.param.clip); });

// Files that open but end early or carry garbage: reading ends with the end flag, and
// what is delivered is in order.
TEST(DamagedInput, ReadsWhatIsThereAndEnds) {
  for (const char* clip : {kDamaged, kTruncatedIndexFirst}) {
    auto reader = OpenReader(clip, Processing::kAdvanced);
    ASSERT_TRUE(reader) << clip;
    ASSERT_EQ(reader->SetCurrentMediaType(0, nullptr, OutputType(MFMediaType_Video, MFVideoFormat_RGB32).Get()), S_OK);
    ASSERT_EQ(reader->SetCurrentMediaType(1, nullptr, OutputType(MFMediaType_Audio, MFAudioFormat_PCM).Get()), S_OK);
    auto video = ReadAllTimes(reader.Get(), 0);
    auto audio = ReadAllTimes(reader.Get(), 1);
    EXPECT_GT(video.size(), 0u) << clip;
    EXPECT_LE(video.size(), size_t(kMovieAac.frames)) << clip;
    EXPECT_TRUE(std::is_sorted(video.begin(), video.end())) << clip;
  }
}

// The decoder's complaints about a damaged clip stay off the console unless asked for.
TEST(DamagedInput, CodecLinesAreShownOnlyWhenAskedFor) {
  auto readDamaged = [] {
    ::testing::internal::CaptureStderr();
    auto reader = OpenReader(kDamaged, Processing::kAdvanced);
    EXPECT_TRUE(reader);
    if (reader) {
      EXPECT_EQ(reader->SetCurrentMediaType(0, nullptr, OutputType(MFMediaType_Video, MFVideoFormat_RGB32).Get()), S_OK);
      ReadAllTimes(reader.Get(), 0);
    }
    return ::testing::internal::GetCapturedStderr();
  };
  EXPECT_EQ(readDamaged(), "");
  TesselPlatformShowCodecLog(TRUE);
  std::string shown = readDamaged();
  TesselPlatformShowCodecLog(FALSE);
  EXPECT_NE(shown, "");
}

TEST(DamagedInput, TruncatedFileSeeksBackAndReadsAgain) {
  auto reader = OpenReader(kTruncatedIndexFirst, Processing::kAdvanced);
  ASSERT_EQ(reader->SetCurrentMediaType(0, nullptr, OutputType(MFMediaType_Video, MFVideoFormat_RGB32).Get()), S_OK);
  auto first = ReadAllTimes(reader.Get(), 0);
  ASSERT_EQ(reader->SetCurrentPosition(GUID_NULL, TimePosition(0)), S_OK);
  EXPECT_EQ(ReadAllTimes(reader.Get(), 0), first);
}

TEST(AbsurdInput, HugeFramesAreRefusedNotAllocated) {
  auto reader = OpenReader(kAbsurdSize, Processing::kAdvanced);
  ASSERT_TRUE(reader);
  ComPtr<IMFMediaType> native;
  ASSERT_EQ(reader->GetNativeMediaType(0, 0, &native), S_OK);
  EXPECT_EQ(MFGetAttributeUINT64(native.Get(), MF_MT_FRAME_SIZE, 0), Pack2UINT32AsUINT64(12000, 12000));
  EXPECT_EQ(reader->SetCurrentMediaType(0, nullptr, OutputType(MFMediaType_Video, MFVideoFormat_RGB32).Get()),
            MF_E_INVALIDMEDIATYPE);
}

TEST(InjectedFailures, BufferCreationFailureReachesReadSample) {
  auto reader = OpenReader(kMovieAac.name, Processing::kAdvanced);
  ASSERT_EQ(reader->SetCurrentMediaType(0, nullptr, OutputType(MFMediaType_Video, MFVideoFormat_RGB32).Get()), S_OK);
  TesselPlatformFailNextBufferCreation(E_OUTOFMEMORY);
  DWORD flags = 0;
  ComPtr<IMFSample> sample;
  EXPECT_EQ(reader->ReadSample(0, 0, nullptr, &flags, nullptr, &sample), E_OUTOFMEMORY);
  EXPECT_FALSE(sample);
  VideoFrame frame;
  EXPECT_TRUE(ReadVideoFrame(reader.Get(), 0, MFVideoFormat_RGB32, &frame)) << "the reader goes on afterwards";
}

TEST(InjectedFailures, ReadSampleFailsOnceWithTheGivenStatus) {
  auto reader = OpenReader(kMovieAac.name, Processing::kAdvanced);
  TesselPlatformFailNextReadSample(MF_E_INVALID_STREAM_DATA);
  DWORD flags = 0;
  ComPtr<IMFSample> sample;
  EXPECT_EQ(reader->ReadSample(0, 0, nullptr, &flags, nullptr, &sample), MF_E_INVALID_STREAM_DATA);
  EXPECT_EQ(reader->ReadSample(0, 0, nullptr, &flags, nullptr, &sample), S_OK);
}

TEST(InjectedFailures, RefusedAdvancedProcessingLeavesPlainProcessing) {
  TesselPlatformRefuseAdvancedVideoProcessing(E_NOTIMPL);
  HRESULT hr = S_OK;
  auto advanced = OpenReader(kMovieAac.name, Processing::kAdvanced, &hr);
  EXPECT_EQ(hr, E_NOTIMPL);
  auto plain = OpenReader(kMovieAac.name, Processing::kBasic, &hr);
  EXPECT_EQ(hr, S_OK);
  TesselPlatformRefuseAdvancedVideoProcessing(0);
}

TEST(PlatformState, AsynchronousReadersAreRefused) {
  ComPtr<IMFAttributes> attributes;
  MFCreateAttributes(&attributes, 1);
  attributes->SetUnknown(MF_SOURCE_READER_ASYNC_CALLBACK, attributes.Get());
  ComPtr<IMFSourceReader> reader;
  EXPECT_EQ(MFCreateSourceReaderFromURL(Wide(ClipPath(kMovieAac.name)).c_str(), attributes.Get(), &reader), E_NOTIMPL);
  attributes->DeleteAllItems();
}

TEST(PlatformState, ReadersNeedTheStartedPlatform) {
  ASSERT_EQ(MFShutdown(), S_OK);
  HRESULT hr = S_OK;
  auto reader = OpenReader(kMovieAac.name, Processing::kAdvanced, &hr);
  EXPECT_EQ(hr, MF_E_PLATFORM_NOT_INITIALIZED);
  ASSERT_EQ(MFStartup(MF_VERSION, MFSTARTUP_FULL), S_OK);
}

}  // namespace
}  // namespace tessel::platform_test
