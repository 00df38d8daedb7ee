// The source reader on the generated clips: stream walk, native types, selection,
// timestamps, end of stream, seeking and duration.
#include <gtest/gtest.h>

#include "fixtures.h"
#include "propidl.h"
#include "reader_support.h"
#include "tessel_platform_control.h"

namespace tessel::platform_test {
namespace {

using namespace tessel::fixtures;

GUID GuidOf(IMFMediaType* type, REFGUID key) {
  GUID value = GUID_NULL;
  EXPECT_EQ(type->GetGUID(key, &value), S_OK);
  return value;
}

UINT64 PairOf(IMFMediaType* type, REFGUID key) { return MFGetAttributeUINT64(type, key, 0); }

ComPtr<IMFMediaType> Native(IMFSourceReader* reader, DWORD stream) {
  ComPtr<IMFMediaType> type;
  EXPECT_EQ(reader->GetNativeMediaType(stream, 0, &type), S_OK);
  return type;
}

int64_t FrameTicks(const Clip& clip) { return int64_t(10000000) * clip.rateDenominator / clip.rateNumerator; }

// The start of frame `index` in ticks, rounded as the reader rounds.
int64_t FrameStart(const Clip& clip, int index) {
  return (int64_t(index) * 10000000 * clip.rateDenominator + clip.rateNumerator / 2) / clip.rateNumerator;
}

TEST(SourceReaderStreams, MovieWithSoundWalksInContainerOrder) {
  auto reader = OpenReader(kMovieAac.name, Processing::kAdvanced);
  auto video = Native(reader.Get(), 0);
  auto audio = Native(reader.Get(), 1);
  EXPECT_EQ(GuidOf(video.Get(), MF_MT_MAJOR_TYPE), MFMediaType_Video);
  EXPECT_EQ(GuidOf(video.Get(), MF_MT_SUBTYPE), MFVideoFormat_H264);
  EXPECT_EQ(PairOf(video.Get(), MF_MT_FRAME_SIZE), Pack2UINT32AsUINT64(320, 240));
  EXPECT_EQ(PairOf(video.Get(), MF_MT_FRAME_RATE), Pack2UINT32AsUINT64(25, 1));
  EXPECT_EQ(PairOf(video.Get(), MF_MT_PIXEL_ASPECT_RATIO), Pack2UINT32AsUINT64(1, 1));
  EXPECT_EQ(MFGetAttributeUINT32(video.Get(), MF_MT_VIDEO_ROTATION, 99), 0u);
  EXPECT_EQ(GuidOf(audio.Get(), MF_MT_MAJOR_TYPE), MFMediaType_Audio);
  EXPECT_EQ(GuidOf(audio.Get(), MF_MT_SUBTYPE), MFAudioFormat_AAC);
  EXPECT_EQ(MFGetAttributeUINT32(audio.Get(), MF_MT_AUDIO_SAMPLES_PER_SECOND, 0), 48000u);
  EXPECT_EQ(MFGetAttributeUINT32(audio.Get(), MF_MT_AUDIO_NUM_CHANNELS, 0), 2u);
  EXPECT_GT(MFGetAttributeUINT32(audio.Get(), MF_MT_AUDIO_AVG_BYTES_PER_SECOND, 0), 0u);

  ComPtr<IMFMediaType> none;
  EXPECT_EQ(reader->GetNativeMediaType(0, 1, &none), MF_E_NO_MORE_TYPES);
  EXPECT_EQ(reader->GetNativeMediaType(2, 0, &none), MF_E_INVALIDSTREAMNUMBER);
  EXPECT_EQ(reader->GetNativeMediaType(MF_SOURCE_READER_FIRST_AUDIO_STREAM, 0, &none), S_OK);
  EXPECT_EQ(GuidOf(none.Get(), MF_MT_SUBTYPE), MFAudioFormat_AAC);
}

TEST(SourceReaderStreams, CodecsAndSoundFilesGetTheirSubtypes) {
  EXPECT_EQ(GuidOf(Native(OpenReader(kMpeg4Part2.name, Processing::kAdvanced).Get(), 0).Get(), MF_MT_SUBTYPE),
            MFVideoFormat_MP4V);
  EXPECT_EQ(GuidOf(Native(OpenReader(kAudioMp3, Processing::kAdvanced).Get(), 0).Get(), MF_MT_SUBTYPE),
            MFAudioFormat_MP3);
  for (auto [clip, bits] : {std::pair{kWav16, 16u}, {kWav24, 24u}, {kWav32, 32u}}) {
    auto wav = Native(OpenReader(clip, Processing::kAdvanced).Get(), 0);
    EXPECT_EQ(GuidOf(wav.Get(), MF_MT_SUBTYPE), MFAudioFormat_PCM) << clip;
    EXPECT_EQ(MFGetAttributeUINT32(wav.Get(), MF_MT_AUDIO_BITS_PER_SAMPLE, 0), bits) << clip;
    EXPECT_EQ(MFGetAttributeUINT32(wav.Get(), MF_MT_AUDIO_AVG_BYTES_PER_SECOND, 0), 48000u * 2 * bits / 8) << clip;
  }
}

TEST(SourceReaderStreams, RotationComesFromTheDisplayMatrix) {
  for (auto [clip, rotation] : {std::pair{kRotated90, 90u}, {kRotated180, 180u}, {kRotated270, 270u}}) {
    auto reader = OpenReader(clip.name, Processing::kAdvanced);
    EXPECT_EQ(MFGetAttributeUINT32(Native(reader.Get(), 0).Get(), MF_MT_VIDEO_ROTATION, 0), rotation) << clip.name;
    ASSERT_EQ(reader->SetCurrentMediaType(0, nullptr, OutputType(MFMediaType_Video, MFVideoFormat_RGB32).Get()), S_OK);
    ComPtr<IMFMediaType> current;
    ASSERT_EQ(reader->GetCurrentMediaType(0, &current), S_OK);
    EXPECT_EQ(MFGetAttributeUINT32(current.Get(), MF_MT_VIDEO_ROTATION, 0), rotation);
    EXPECT_EQ(PairOf(current.Get(), MF_MT_FRAME_SIZE), Pack2UINT32AsUINT64(240, 160)) << "frames are not turned";
  }
}

TEST(SourceReaderStreams, AnamorphicClipsReportTheirPixelAspectRatio) {
  auto pal = OpenReader(kAnamorphicPal.name, Processing::kAdvanced);
  EXPECT_EQ(PairOf(Native(pal.Get(), 0).Get(), MF_MT_PIXEL_ASPECT_RATIO), Pack2UINT32AsUINT64(16, 15));
  EXPECT_EQ(PairOf(Native(pal.Get(), 0).Get(), MF_MT_FRAME_SIZE), Pack2UINT32AsUINT64(720, 576));
  auto ntsc = OpenReader(kAnamorphicNtsc.name, Processing::kAdvanced);
  EXPECT_EQ(PairOf(Native(ntsc.Get(), 0).Get(), MF_MT_PIXEL_ASPECT_RATIO), Pack2UINT32AsUINT64(8, 9));
  EXPECT_EQ(PairOf(Native(ntsc.Get(), 0).Get(), MF_MT_FRAME_RATE), Pack2UINT32AsUINT64(30000, 1001));
}

TEST(SourceReaderTiming, EveryFrameOnceInOrderWithTicksAndEnd) {
  for (const Clip& clip : {kMovieAac, kNtscRate}) {
    auto reader = OpenReader(clip.name, Processing::kAdvanced);
    ASSERT_EQ(reader->SetCurrentMediaType(0, nullptr, OutputType(MFMediaType_Video, MFVideoFormat_RGB32).Get()), S_OK);
    VideoFrame frame;
    int count = 0;
    while (ReadVideoFrame(reader.Get(), 0, MFVideoFormat_RGB32, &frame)) {
      EXPECT_EQ(FrameNumber(frame, MFVideoFormat_RGB32), count) << clip.name;
      EXPECT_NEAR(double(frame.time), double(FrameStart(clip, count)), 1.0) << clip.name;
      EXPECT_NEAR(double(frame.duration), double(FrameTicks(clip)), 1.0) << clip.name;
      ++count;
    }
    EXPECT_EQ(count, clip.frames) << clip.name;
    DWORD flags = 0;
    ComPtr<IMFSample> sample;
    EXPECT_EQ(reader->ReadSample(0, 0, nullptr, &flags, nullptr, &sample), S_OK);
    EXPECT_TRUE(flags & MF_SOURCE_READERF_ENDOFSTREAM) << "the end stays the end";
    EXPECT_FALSE(sample);
  }
}

TEST(SourceReaderTiming, DurationIsAPresentationAttribute) {
  auto reader = OpenReader(kMovieAac.name, Processing::kAdvanced);
  PROPVARIANT value;
  PropVariantInit(&value);
  ASSERT_EQ(reader->GetPresentationAttribute(MF_SOURCE_READER_MEDIASOURCE, MF_PD_DURATION, &value), S_OK);
  EXPECT_EQ(value.vt, VT_UI8);
  EXPECT_NEAR(double(value.uhVal.QuadPart), 2.0e7, 0.05e7);
  PropVariantClear(&value);
}

TEST(SourceReaderSelection, ReadingOneStreamKeepsTheOthersSamples) {
  auto reader = OpenReader(kMultiStream.name, Processing::kAdvanced);
  ASSERT_EQ(reader->SetStreamSelection(MF_SOURCE_READER_ALL_STREAMS, TRUE), S_OK);
  for (DWORD audio : {1u, 2u}) {
    ASSERT_EQ(reader->SetCurrentMediaType(audio, nullptr, OutputType(MFMediaType_Audio, MFAudioFormat_PCM).Get()),
              S_OK);
  }
  auto videoTimes = ReadAllTimes(reader.Get(), 0);
  EXPECT_EQ(videoTimes.size(), size_t(kMultiStream.frames));
  for (DWORD audio : {1u, 2u}) {
    auto times = ReadAllTimes(reader.Get(), audio);
    ASSERT_FALSE(times.empty());
    EXPECT_LE(times.front(), 0) << "stream " << audio << " starts at its beginning";
    EXPECT_GT(times.back(), int64_t(19000000)) << "stream " << audio << " runs to its end";
  }
}

TEST(SourceReaderSelection, AnyStreamGivesEveryStreamsSamplesAndEndsOnce) {
  auto reader = OpenReader(kMovieAac.name, Processing::kAdvanced);
  ASSERT_EQ(reader->SetCurrentMediaType(0, nullptr, OutputType(MFMediaType_Video, MFVideoFormat_RGB32).Get()), S_OK);
  ASSERT_EQ(reader->SetCurrentMediaType(1, nullptr, OutputType(MFMediaType_Audio, MFAudioFormat_Float).Get()), S_OK);
  int samples[2] = {0, 0};
  int ends[2] = {0, 0};
  for (int guard = 0; guard < 10000; ++guard) {
    DWORD index = 99, flags = 0;
    ComPtr<IMFSample> sample;
    ASSERT_EQ(reader->ReadSample(MF_SOURCE_READER_ANY_STREAM, 0, &index, &flags, nullptr, &sample), S_OK);
    if ((flags & MF_SOURCE_READERF_ENDOFSTREAM) && index > 1) break;
    ASSERT_LE(index, 1u);
    if (flags & MF_SOURCE_READERF_ENDOFSTREAM) ++ends[index];
    else ++samples[index];
    if (ends[0] && ends[1]) break;
  }
  EXPECT_EQ(samples[0], kMovieAac.frames);
  EXPECT_GT(samples[1], 40);
  EXPECT_EQ(ends[0], 1);
  EXPECT_EQ(ends[1], 1);
}

TEST(SourceReaderSelection, DeselectedStreamsCanNotBeRead) {
  auto reader = OpenReader(kMovieAac.name, Processing::kAdvanced);
  ASSERT_EQ(reader->SetStreamSelection(1, FALSE), S_OK);
  DWORD flags = 0;
  ComPtr<IMFSample> sample;
  EXPECT_EQ(reader->ReadSample(1, 0, nullptr, &flags, nullptr, &sample), MF_E_INVALIDREQUEST);
  EXPECT_EQ(reader->ReadSample(7, 0, nullptr, &flags, nullptr, &sample), MF_E_INVALIDSTREAMNUMBER);
  EXPECT_EQ(reader->SetStreamSelection(7, TRUE), MF_E_INVALIDSTREAMNUMBER);
}

class SourceReaderSeek : public ::testing::TestWithParam<int> {};

TEST_P(SourceReaderSeek, LandsOnTheKeyFrameAtOrBeforeTheTarget) {
  const int target = GetParam();
  auto reader = OpenReader(kMovieAac.name, Processing::kAdvanced);
  ASSERT_EQ(reader->SetCurrentMediaType(0, nullptr, OutputType(MFMediaType_Video, MFVideoFormat_RGB32).Get()), S_OK);
  VideoFrame frame;
  for (int i = 0; i < 30; ++i) ASSERT_TRUE(ReadVideoFrame(reader.Get(), 0, MFVideoFormat_RGB32, &frame));
  PROPVARIANT position = TimePosition(target * FrameTicks(kMovieAac) + FrameTicks(kMovieAac) / 3);
  ASSERT_EQ(reader->SetCurrentPosition(GUID_NULL, position), S_OK);
  ASSERT_TRUE(ReadVideoFrame(reader.Get(), 0, MFVideoFormat_RGB32, &frame));
  int landed = FrameNumber(frame, MFVideoFormat_RGB32);
  EXPECT_EQ(landed, target / kGopLength * kGopLength);
  EXPECT_LE(frame.time, position.hVal.QuadPart);
  EXPECT_NEAR(double(frame.time), double(landed * FrameTicks(kMovieAac)), 1.0);
  for (int next = landed + 1; next < kMovieAac.frames; ++next) {
    ASSERT_TRUE(ReadVideoFrame(reader.Get(), 0, MFVideoFormat_RGB32, &frame));
    ASSERT_EQ(FrameNumber(frame, MFVideoFormat_RGB32), next);
  }
}

INSTANTIATE_TEST_SUITE_P(Targets, SourceReaderSeek, ::testing::Values(0, 5, 12, 13, 23, 24, 40, 49));

TEST(SourceReaderSeekLimits, WrongFormatAndTypeAreRefused) {
  auto reader = OpenReader(kMovieAac.name, Processing::kAdvanced);
  PROPVARIANT seconds = TimePosition(0);
  seconds.vt = VT_R8;
  EXPECT_EQ(reader->SetCurrentPosition(GUID_NULL, seconds), E_INVALIDARG);
  EXPECT_EQ(reader->SetCurrentPosition(MF_MT_SUBTYPE, TimePosition(0)), MF_E_UNSUPPORTED_TIME_FORMAT);
}

TEST(SourceReaderLifetime, ReadersAreCountedAndReleased) {
  int64_t before = TesselPlatformGetCounters().liveSourceReaders;
  {
    auto reader = OpenReader(kMovieAac.name, Processing::kAdvanced);
    EXPECT_EQ(TesselPlatformGetCounters().liveSourceReaders, before + 1);
  }
  EXPECT_EQ(TesselPlatformGetCounters().liveSourceReaders, before);
}

}  // namespace
}  // namespace tessel::platform_test
