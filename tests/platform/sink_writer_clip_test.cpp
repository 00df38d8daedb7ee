// What the sink writer puts into a file, read back with FFmpeg: every container with
// every video and audio codec it holds, frame rates as ratios, the bit rate, colour,
// the sound inputs, and a whole sound track given at once.
#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <fstream>
#include <iterator>

#include "reference_decoder.h"
#include "writer_support.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libswscale/swscale.h>
}

namespace tessel::platform_test {
namespace {

using tessel::fixtures::Psnr;

struct Combination {
  const char* suffix;
  const GUID* video;
  AVCodecID videoCodec;
  const GUID* audio;
  AVCodecID audioCodec;
};

const Combination kCombinations[] = {
    {".mp4", &MFVideoFormat_H264, AV_CODEC_ID_H264, &MFAudioFormat_AAC, AV_CODEC_ID_AAC},
    {".mp4", &MFVideoFormat_H264, AV_CODEC_ID_H264, &MFAudioFormat_MP3, AV_CODEC_ID_MP3},
    {".3gp", &MFVideoFormat_H264, AV_CODEC_ID_H264, &MFAudioFormat_AAC, AV_CODEC_ID_AAC},
    {".asf", &MFVideoFormat_H264, AV_CODEC_ID_H264, &MFAudioFormat_AAC, AV_CODEC_ID_AAC},
    {".asf", &MFVideoFormat_H264, AV_CODEC_ID_H264, &MFAudioFormat_MP3, AV_CODEC_ID_MP3},
    {".asf", &MFVideoFormat_WMV1, AV_CODEC_ID_WMV1, &MFAudioFormat_AAC, AV_CODEC_ID_AAC},
    {".asf", &MFVideoFormat_WMV1, AV_CODEC_ID_WMV1, &MFAudioFormat_MP3, AV_CODEC_ID_MP3},
    {".asf", &MFVideoFormat_WMV2, AV_CODEC_ID_WMV2, &MFAudioFormat_AAC, AV_CODEC_ID_AAC},
    {".asf", &MFVideoFormat_WMV2, AV_CODEC_ID_WMV2, &MFAudioFormat_MP3, AV_CODEC_ID_MP3},
    {".asf", &MFVideoFormat_WMV3, AV_CODEC_ID_WMV3, &MFAudioFormat_AAC, AV_CODEC_ID_AAC},
    {".asf", &MFVideoFormat_WMV3, AV_CODEC_ID_WMV3, &MFAudioFormat_MP3, AV_CODEC_ID_MP3},
};

std::string Name(const Combination& c) {
  return std::string(c.suffix + 1) + "_" + avcodec_get_name(c.videoCodec) + "_" + avcodec_get_name(c.audioCodec);
}
void PrintTo(const Combination& c, std::ostream* out) { *out << Name(c); }

// Frame index of the pattern as YUY2, BT.601 in limited range.
ComPtr<IMFSample> Yuy2Sample(const ClipSpec& spec, int index) {
  std::vector<uint8_t> rgb = PatternPicture(index, spec.width, spec.height);
  std::vector<uint8_t> yuy2(size_t(spec.width) * spec.height * 2);
  SwsContext* scaler = sws_getContext(int(spec.width), int(spec.height), AV_PIX_FMT_BGR0, int(spec.width),
                                      int(spec.height), AV_PIX_FMT_YUYV422, SWS_BICUBIC, nullptr, nullptr, nullptr);
  const uint8_t* in[4] = {rgb.data()};
  int inPitch[4] = {int(spec.width) * 4};
  uint8_t* out[4] = {yuy2.data()};
  int outPitch[4] = {int(spec.width) * 2};
  sws_scale(scaler, in, inPitch, 0, int(spec.height), out, outPitch);
  sws_freeContext(scaler);
  return MakeSample(yuy2, Ticks(index / 25.0), Ticks(1 / 25.0));
}

std::string FileBytes(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(file), {});
}

// Every decoded picture is the one given, upright, in its place and close to it.
void ExpectPicturesOf(const ClipSpec& spec, const std::string& path, double minimumPsnr) {
  auto pictures = DecodePictures(path);
  ASSERT_EQ(int(pictures.size()), spec.frames);
  for (int i = 0; i < spec.frames; ++i) {
    VideoFrame frame{0, 0, int(spec.width), int(spec.height), int(spec.width) * 4, pictures[size_t(i)]};
    EXPECT_EQ(FrameNumber(frame, MFVideoFormat_RGB32), i);
    EXPECT_GE(Psnr(pictures[size_t(i)], PatternPicture(i, spec.width, spec.height)), minimumPsnr) << "frame " << i;
  }
}

class ClipMatrix : public ::testing::TestWithParam<Combination> {};

TEST_P(ClipMatrix, ReadsBackAsWritten) {
  const Combination& c = GetParam();
  ClipSpec spec{c.suffix, c.video, c.audio};
  spec.aspectNumerator = 16, spec.aspectDenominator = 15;
  std::string path = WrittenPath("matrix_" + Name(c) + c.suffix);
  ASSERT_EQ(WriteClip(spec, path), S_OK);
  MovieFacts facts = ProbeMovie(path);
  ASSERT_TRUE(facts.opened);
  EXPECT_EQ(facts.video.codec, c.videoCodec);
  EXPECT_EQ(facts.video.width, 320);
  EXPECT_EQ(facts.video.height, 240);
  EXPECT_EQ(av_cmp_q(facts.video.containerAspect, {16, 15}), 0);
  if (c.videoCodec == AV_CODEC_ID_H264) {
    EXPECT_EQ(facts.video.profile, FF_PROFILE_H264_MAIN);
    EXPECT_EQ(av_cmp_q(facts.video.aspect, {16, 15}), 0) << "in the stream too";
  }
  EXPECT_EQ(av_cmp_q(facts.video.frameRate, {25, 1}), 0);
  EXPECT_EQ(facts.video.packets, spec.frames);
  EXPECT_NEAR(facts.video.end - facts.video.start, 1.0, 0.04);
  ASSERT_FALSE(facts.video.keyPackets.empty());
  EXPECT_EQ(facts.video.keyPackets.front(), 0);
  for (size_t i = 1; i < facts.video.keyPackets.size(); ++i) {
    EXPECT_LE(facts.video.keyPackets[i] - facts.video.keyPackets[i - 1], 12);
  }
  EXPECT_GE(facts.video.keyPackets.size(), 3u) << "25 frames need key frames at 0, 12 and 24";
  EXPECT_EQ(facts.audio.codec, c.audioCodec);
  EXPECT_EQ(facts.audio.sampleRate, 48000);
  EXPECT_EQ(facts.audio.channels, 2);
  EXPECT_NEAR(facts.audio.end - facts.audio.start, 1.0, 0.06);
  EXPECT_NEAR(double(facts.audio.bytes) * 8 / (facts.audio.end - facts.audio.start), 192000, 19200);
  if (c.audioCodec == AV_CODEC_ID_MP3) {
    EXPECT_EQ(facts.audio.bytes, int64_t(facts.audio.packets) * 576) << "constant rate, 576 bytes a frame";
  }
  EXPECT_NEAR(SoundOnset(path), facts.video.start, 0.02) << "sound and picture start together";
  ExpectPicturesOf(spec, path, 35.0);
  if (std::string(c.suffix) != ".asf") {
    std::string bytes = FileBytes(path);
    EXPECT_LT(bytes.find("moov"), bytes.find("mdat")) << "index in front";
  }
}

INSTANTIATE_TEST_SUITE_P(Containers, ClipMatrix, ::testing::ValuesIn(kCombinations),
                         [](const auto& info) { return Name(info.param); });

// 2997/100 stays that ratio in MPEG-4; ASF counts in milliseconds and keeps the rate to
// that precision.
TEST(WrittenClip, FrameRateIsKeptAsARatio) {
  for (const char* suffix : {".mp4", ".asf"}) {
    ClipSpec spec{suffix, &MFVideoFormat_H264, nullptr};
    spec.rateNumerator = 2997, spec.rateDenominator = 100, spec.frames = 60;
    std::string path = WrittenPath(std::string("rate_2997") + suffix);
    ASSERT_EQ(WriteClip(spec, path), S_OK);
    MovieFacts facts = ProbeMovie(path);
    if (std::string(suffix) == ".mp4") {
      EXPECT_EQ(av_cmp_q(facts.video.frameRate, {2997, 100}), 0);
    }
    EXPECT_NEAR(av_q2d(facts.video.frameRate), 29.97, 0.03) << suffix;
    EXPECT_EQ(facts.video.packets, 60) << suffix;
    EXPECT_NEAR(facts.video.end - facts.video.start, 60 / 29.97, 1 / 29.97) << suffix;
  }
}

// Without a profile the encoder's own choice stands, and a level of 0xFFFFFFFF leaves the
// level to the encoder (kAnyLevel).
TEST(WrittenClip, H264ProfileAndLevelAreTheOnesAsked) {
  constexpr int kAnyLevel = 0;
  struct Case {
    UINT32 profile, level;
    int expectedProfile, expectedLevel;
  };
  for (const Case& c : {Case{66, 30, FF_PROFILE_H264_CONSTRAINED_BASELINE, 30}, Case{100, 41, FF_PROFILE_H264_HIGH, 41},
                        Case{0, 0xFFFFFFFF, FF_PROFILE_H264_HIGH, kAnyLevel}}) {
    ClipSpec spec{".mp4", &MFVideoFormat_H264, nullptr};
    spec.profile = c.profile, spec.level = c.level, spec.frames = 5;
    std::string path = WrittenPath("profile_" + std::to_string(c.profile) + ".mp4");
    ASSERT_EQ(WriteClip(spec, path), S_OK);
    MovieFacts facts = ProbeMovie(path);
    EXPECT_EQ(facts.video.profile, c.expectedProfile) << c.profile;
    if (c.expectedLevel == kAnyLevel) {
      EXPECT_GT(facts.video.level, 0);
    } else {
      EXPECT_EQ(facts.video.level, c.expectedLevel) << c.profile;
    }
  }
}

// Five seconds of moving pictures at 1.5 Mbit/s; no key frame spacing in the type gives
// a key frame every two seconds.
TEST(WrittenClip, H264KeepsItsAverageBitRate) {
  ClipSpec spec{".mp4", &MFVideoFormat_H264, nullptr};
  spec.width = 640, spec.height = 360, spec.bitRate = 1500000, spec.keyFrames = 0, spec.frames = 125;
  std::string path = WrittenPath("bitrate.mp4");
  ASSERT_EQ(WriteClip(spec, path), S_OK);
  MovieFacts facts = ProbeMovie(path);
  double bitRate = double(facts.video.bytes) * 8 / (facts.video.end - facts.video.start);
  EXPECT_NEAR(bitRate, 1500000, 150000);
  for (size_t i = 1; i < facts.video.keyPackets.size(); ++i) {
    EXPECT_LE(facts.video.keyPackets[i] - facts.video.keyPackets[i - 1], 50);
  }
}

// Below 720 lines the pictures are BT.601, from 720 lines on BT.709; the stream says which
// and MPEG-4 says it again in its colour box, so a player gives back the colours that
// went in.
TEST(WrittenClip, ColourIsConvertedAndDescribed) {
  struct Case {
    UINT32 width, height;
    AVColorSpace matrix;
  };
  for (const Case& c : {Case{320, 240, AVCOL_SPC_SMPTE170M}, Case{1280, 720, AVCOL_SPC_BT709}}) {
    ClipSpec spec{".mp4", &MFVideoFormat_H264, nullptr};
    spec.width = c.width, spec.height = c.height, spec.bitRate = 8000000, spec.frames = 8;
    std::string path = WrittenPath("colour_" + std::to_string(c.height) + ".mp4");
    ASSERT_EQ(WriteClip(spec, path), S_OK);
    MovieFacts facts = ProbeMovie(path);
    EXPECT_EQ(facts.video.matrix, c.matrix);
    EXPECT_EQ(facts.video.primaries, AVCOL_PRI_BT709);
    EXPECT_EQ(facts.video.transfer, AVCOL_TRC_BT709);
    EXPECT_EQ(facts.video.range, AVCOL_RANGE_MPEG);
    EXPECT_NE(FileBytes(path).find("colrnclx"), std::string::npos);
    ExpectPicturesOf(spec, path, 35.0);
  }
}

// A stride in the input type decides the order of the rows for every codec; YUY2 is
// top-down.
TEST(WrittenClip, StatedStrideAndYuy2ComeOutUpright) {
  struct Case {
    const char* name;
    const GUID* video;
    const GUID* input;
    int stride;  // in rows of RGB32; 0 states none
    bool bottomUp;
  };
  const Case cases[] = {
      {"wmv2_bottom_up", &MFVideoFormat_WMV2, &MFVideoFormat_RGB32, -1, true},
      {"h264_top_down", &MFVideoFormat_H264, &MFVideoFormat_RGB32, 1, false},
      {"h264_yuy2", &MFVideoFormat_H264, &MFVideoFormat_YUY2, 0, false},
  };
  for (const Case& c : cases) {
    ClipSpec spec{".asf", c.video, nullptr};
    ComPtr<IMFMediaType> input = VideoInputType(spec, *c.input);
    if (c.stride) input->SetUINT32(MF_MT_DEFAULT_STRIDE, UINT32(c.stride * int(spec.width) * 4));
    std::string path = WrittenPath(std::string("rows_") + c.name + ".asf");
    ComPtr<IMFSinkWriter> writer;
    DWORD video = 0;
    ASSERT_EQ(MFCreateSinkWriterFromURL(Wide(path).c_str(), nullptr, nullptr, &writer), S_OK);
    ASSERT_EQ(writer->AddStream(VideoTargetType(spec).Get(), &video), S_OK);
    ASSERT_EQ(writer->SetInputMediaType(video, input.Get(), nullptr), S_OK) << c.name;
    ASSERT_EQ(writer->BeginWriting(), S_OK);
    for (int i = 0; i < spec.frames; ++i) {
      ComPtr<IMFSample> sample = *c.input == MFVideoFormat_YUY2 ? Yuy2Sample(spec, i) : PatternSample(spec, i, c.bottomUp);
      ASSERT_EQ(writer->WriteSample(video, sample.Get()), S_OK);
    }
    ASSERT_EQ(writer->Finalize(), S_OK);
    SCOPED_TRACE(c.name);
    ExpectPicturesOf(spec, path, 34.0);
  }
}

// PCM of other rates, sizes and channel counts is converted; 5.1 is mixed to stereo.
TEST(WrittenClip, SoundInputsAreConverted) {
  struct Case {
    UINT32 rate, channels, bits, outChannels;
  };
  for (const Case& c : {Case{48000, 6, 16, 2}, Case{22050, 2, 8, 2}, Case{96000, 2, 24, 2}, Case{44100, 1, 32, 1}}) {
    ClipSpec spec{".mp4", &MFVideoFormat_H264, &MFAudioFormat_AAC};
    spec.inputRate = c.rate, spec.inputChannels = c.channels, spec.inputBits = c.bits;
    std::string name = std::to_string(c.channels) + "ch_" + std::to_string(c.bits) + "bit";
    std::string path = WrittenPath("sound_" + name + ".mp4");
    ASSERT_EQ(WriteClip(spec, path), S_OK) << name;
    MovieFacts facts = ProbeMovie(path);
    EXPECT_EQ(facts.audio.channels, int(c.outChannels)) << name;
    EXPECT_EQ(facts.audio.sampleRate, 48000) << name;
    EXPECT_NEAR(facts.audio.end - facts.audio.start, 1.0, 0.03) << name;
    EXPECT_NEAR(SoundOnset(path), 0.0, 0.01) << name;
  }
}

// A minute of sound given as one sample before a few frames: it is spread over the file
// between the pictures and keeps its length.
TEST(WrittenClip, WholeTrackOfAMinuteIsInterleaved) {
  ClipSpec spec{".mp4", &MFVideoFormat_H264, &MFAudioFormat_AAC};
  spec.width = 160, spec.height = 120, spec.frames = 250, spec.rateNumerator = 5;
  spec.soundSeconds = 60, spec.inputRate = 48000;
  std::string path = WrittenPath("whole_track.mp4");
  auto start = std::chrono::steady_clock::now();
  ASSERT_EQ(WriteClip(spec, path), S_OK);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(60));
  MovieFacts facts = ProbeMovie(path);
  EXPECT_NEAR(facts.audio.end - facts.audio.start, 60.0, 0.03);
  EXPECT_NEAR(facts.video.end - facts.video.start, 50.0, 0.2);
  EXPECT_LT(facts.interleaveGap, 1.0);
  EXPECT_NEAR(SoundOnset(path), 0.0, 0.01);
}

}  // namespace
}  // namespace tessel::platform_test
