// Writing AVI files through the AVI functions, read back with FFmpeg: every compressor
// with sound, frame rates, quality, key frames, data rate, the order of releases, the
// interleaving of sound, large files, and the statuses of what can't be written.
#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>

#include "avi_support.h"
#include "reader_support.h"
#include "reference_decoder.h"
#include "tessel_platform_control.h"
#include "vfw.h"

namespace tessel::platform_test {
namespace {

using fixtures::Psnr;
using fixtures::ReferenceDecoder;
using fixtures::ReferencePicture;
using fixtures::ReferenceSound;

DWORD Code(const char* text) { return mmioFOURCC(text[0], text[1], text[2], text[3]); }

// A job of a compressor at a size, 64 by 64 unless told.
AviJob Job(const char* code, int width = 64, int height = 64) {
  AviJob job{Code(code)};
  job.width = width;
  job.height = height;
  return job;
}

class AviTest : public ::testing::Test {
 protected:
  void SetUp() override { AVIFileInit(); }
  void TearDown() override {
    AVIFileExit();
    RemoveTempAvis();
  }
};

// Each compressor: what FFmpeg must find, and how close the pictures must come.
struct CompressorCase {
  const char* code;
  AVCodecID codec;
  double minPsnr;  // 100: the pictures come back exactly
};

const CompressorCase kCompressorCases[] = {
    {"DIB ", AV_CODEC_ID_RAWVIDEO, 100}, {"iyuv", AV_CODEC_ID_RAWVIDEO, 35}, {"i420", AV_CODEC_ID_RAWVIDEO, 35},
    {"mjpg", AV_CODEC_ID_MJPEG, 35},     {"xvid", AV_CODEC_ID_MPEG4, 35},    {"divx", AV_CODEC_ID_MPEG4, 35},
    {"fmp4", AV_CODEC_ID_MPEG4, 35},     {"dx50", AV_CODEC_ID_MPEG4, 35},    {"mp42", AV_CODEC_ID_MSMPEG4V2, 35},
    {"mp43", AV_CODEC_ID_MSMPEG4V3, 35}, {"wmv1", AV_CODEC_ID_WMV1, 35},     {"wmv2", AV_CODEC_ID_WMV2, 35},
    {"wmv3", AV_CODEC_ID_WMV3, 35},      {"hfyu", AV_CODEC_ID_HUFFYUV, 100},  {"cvid", AV_CODEC_ID_CINEPAK, 30},  {"msvc", AV_CODEC_ID_MSVIDEO1, 28},
    {"cram", AV_CODEC_ID_MSVIDEO1, 28},  {"ffv1", AV_CODEC_ID_FFV1, 100},    {"h264", AV_CODEC_ID_H264, 35},
    {"x264", AV_CODEC_ID_H264, 35},
};

// The pictures of a file against the pattern: the lowest PSNR, and how many there were.
double LowestPsnr(const std::string& path, const AviJob& job, int* frames) {
  ReferenceDecoder decoder(path, AV_PIX_FMT_BGR24, job.width, job.height, job.width * 3);
  ReferencePicture picture;
  double lowest = 100;
  for (*frames = 0; decoder.Next(picture); ++*frames)
    lowest = std::min(lowest, Psnr(picture.pixels, PatternTopDown(job.width, job.height, *frames)));
  return lowest;
}

bool SoundIsTheTone(const std::string& path, const AviJob& job) {
  std::vector<int16_t> tone = ToneSamples(job.soundRate, job.soundSamples);
  std::vector<uint8_t> sound = ReferenceSound(path, AV_SAMPLE_FMT_S16);
  return sound.size() == tone.size() * 2 && std::memcmp(sound.data(), tone.data(), sound.size()) == 0;
}

class CompressorRoundTrip : public AviTest, public ::testing::WithParamInterface<CompressorCase> {};

TEST_P(CompressorRoundTrip, FramesAndSoundComeBack) {
  const CompressorCase& c = GetParam();
  std::string path = TempAviPath("movie.avi");
  AviJob job = Job(c.code, 160, 120);
  ASSERT_EQ(WriteAvi(path, job), S_OK);

  AviContents contents = ReadAvi(path);
  ASSERT_TRUE(contents.opened);
  EXPECT_EQ(contents.videoCodec, c.codec);
  EXPECT_EQ(contents.width, job.width);
  EXPECT_EQ(contents.height, job.height);
  EXPECT_EQ(av_cmp_q(contents.frameRate, AVRational{25, 1}), 0);
  EXPECT_EQ(contents.keyFrames.size(), size_t(job.frames));
  int frames = 0;
  EXPECT_GE(LowestPsnr(path, job, &frames), c.minPsnr);
  EXPECT_EQ(frames, job.frames);
  EXPECT_EQ(contents.soundRate, job.soundRate);
  EXPECT_EQ(contents.soundChannels, 2);
  EXPECT_TRUE(SoundIsTheTone(path, job));
}

INSTANTIATE_TEST_SUITE_P(EveryCompressor, CompressorRoundTrip, ::testing::ValuesIn(kCompressorCases),
                         [](const auto& info) { return TestName(info.param.code); });

TEST_F(AviTest, EveryListedCompressorIsRoundTripped) {
  std::vector<TesselCompressor> listed(TesselPlatformGetCompressors(nullptr, 0));
  ASSERT_EQ(TesselPlatformGetCompressors(listed.data(), DWORD(listed.size())), listed.size());
  ASSERT_EQ(listed.size(), std::size(kCompressorCases));
  for (size_t i = 0; i < listed.size(); ++i) EXPECT_EQ(listed[i].fccHandler, Code(kCompressorCases[i].code));
}

struct RateCase {
  const char* code;
  DWORD rate;
  DWORD scale;
  AVRational expected;
};

TEST_F(AviTest, FrameRateComesFromRateAndScale) {
  const RateCase cases[] = {
      {"DIB ", 25, 1, {25, 1}},
      {"DIB ", 2997, 100, {2997, 100}},
      {"DIB ", 25000000, 1000000, {25, 1}},
      {"xvid", 30000, 1001, {30000, 1001}},
      {"h264", 2997, 100, {2997, 100}},
  };
  for (const RateCase& c : cases) {
    std::string path = TempAviPath("rate.avi");
    AviJob job = Job(c.code);
    job.rate = c.rate;
    job.scale = c.scale;
    job.frames = 3;
    job.soundRate = 0;
    ASSERT_EQ(WriteAvi(path, job), S_OK) << c.code << " " << c.rate << "/" << c.scale;
    AviContents contents = ReadAvi(path);
    EXPECT_EQ(av_cmp_q(contents.frameRate, c.expected), 0) << c.code << " " << c.rate << "/" << c.scale;
    EXPECT_EQ(contents.keyFrames.size(), 3u);
  }
}

// Rows of 65 pixels are padded to 196 bytes in the DIBs; lossless compressors give them
// back exactly all the same.
TEST_F(AviTest, PaddedRowsComeBackExactly) {
  for (const char* code : {"DIB ", "hfyu", "ffv1"}) {
    std::string path = TempAviPath("padded.avi");
    AviJob job = Job(code, 65, 49);
    job.frames = 3;
    ASSERT_EQ(WriteAvi(path, job), S_OK) << code;
    int frames = 0;
    EXPECT_EQ(LowestPsnr(path, job, &frames), 100) << code;
    EXPECT_EQ(frames, job.frames) << code;
  }
}

class QualityOrder : public AviTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(QualityOrder, MoreQualityNeverGivesASmallerFile) {
  std::vector<int64_t> bytes;
  for (DWORD quality : {0, 2500, 5000, 7500, 10000}) {
    std::string path = TempAviPath("quality.avi");
    AviJob job = Job(GetParam(), 160, 120);
    job.quality = quality;
    job.frames = 10;
    job.soundRate = 0;
    ASSERT_EQ(WriteAvi(path, job), S_OK);
    bytes.push_back(ReadAvi(path).videoBytes);
  }
  for (size_t i = 1; i < bytes.size(); ++i) EXPECT_GE(bytes[i], bytes[i - 1]) << "step " << i;
  EXPECT_GT(bytes.back(), 2 * bytes.front());
}

INSTANTIATE_TEST_SUITE_P(QualityCompressors, QualityOrder, ::testing::Values("mjpg", "xvid", "wmv2", "h264", "cvid"));

class KeyFrameDistance : public AviTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(KeyFrameDistance, KeyFramesComeAtTheDistanceAsked) {
  std::string path = TempAviPath("keys.avi");
  AviJob job = Job(GetParam());
  job.keyFrameEvery = 5;
  job.frames = 16;
  job.soundRate = 0;
  ASSERT_EQ(WriteAvi(path, job), S_OK);
  std::vector<bool> keys = ReadAvi(path).keyFrames;
  ASSERT_EQ(keys.size(), 16u);
  for (size_t i = 0; i < keys.size(); i += 5) EXPECT_TRUE(keys[i]) << "frame " << i;
  EXPECT_FALSE(keys[1] && keys[2] && keys[3] && keys[4]) << "every frame is a key frame";
}

INSTANTIATE_TEST_SUITE_P(KeyFrameCompressors, KeyFrameDistance,
                         ::testing::Values("xvid", "mp42", "mp43", "wmv1", "wmv2", "h264", "cvid", "msvc"));

// The compressing stream takes DIBs and gives its source the compressor's format.
TEST_F(AviTest, EachStreamTellsItsFormatAndCompressor) {
  AviJob job = Job("mjpg");
  AviWriter writer;
  ASSERT_EQ(writer.Open(TempAviPath("formats.avi"), job), S_OK);
  BITMAPINFOHEADER taken{};
  BITMAPINFOHEADER stored{};
  LONG size = sizeof(taken);
  ASSERT_EQ(writer.compressed->ReadFormat(0, &taken, &size), S_OK);
  EXPECT_EQ(taken.biCompression, BI_RGB);
  EXPECT_EQ(taken.biBitCount, 24);
  size = sizeof(stored);
  ASSERT_EQ(writer.stream->ReadFormat(0, &stored, &size), S_OK);
  EXPECT_EQ(stored.biCompression, Code("MJPG"));
  EXPECT_EQ(stored.biWidth, job.width);
  AVISTREAMINFOW info{};
  ASSERT_EQ(writer.compressed->Info(&info, sizeof(info)), S_OK);
  EXPECT_EQ(info.fccHandler, Code("mjpg"));
  EXPECT_EQ(info.dwRate, job.rate);
}

TEST_F(AviTest, AKeyFrameIsMadeWhenAskedFor) {
  std::string path = TempAviPath("forced.avi");
  AviJob job = Job("xvid");
  AviWriter writer;
  ASSERT_EQ(writer.Open(path, job), S_OK);
  for (int frame = 0; frame < 10; ++frame)
    ASSERT_EQ(writer.WriteFrame(job, frame, frame, frame == 7 ? AVIIF_KEYFRAME : 0), S_OK);
  writer.Release();
  std::vector<bool> keys = ReadAvi(path).keyFrames;
  ASSERT_EQ(keys.size(), 10u);
  EXPECT_FALSE(keys[6]);
  EXPECT_TRUE(keys[7]);
}

// A data rate that each encoder can reach with the pattern at 320 by 240.
struct RateTarget {
  const char* code;
  DWORD bytesPerSecond;
};

class DataRate : public AviTest, public ::testing::WithParamInterface<RateTarget> {};

TEST_P(DataRate, TheFileKeepsTheDataRate) {
  std::string path = TempAviPath("rate.avi");
  AviJob job = Job(GetParam().code, 320, 240);
  job.bytesPerSecond = GetParam().bytesPerSecond;
  job.frames = 100;
  job.soundRate = 0;
  ASSERT_EQ(WriteAvi(path, job), S_OK);
  double bytesPerSecond = ReadAvi(path).videoBytes / (job.frames / 25.0);
  EXPECT_NEAR(bytesPerSecond, job.bytesPerSecond, 0.15 * job.bytesPerSecond);
}

INSTANTIATE_TEST_SUITE_P(RateCompressors, DataRate,
                         ::testing::Values(RateTarget{"mjpg", 120000}, RateTarget{"xvid", 60000},
                                           RateTarget{"mp42", 60000}, RateTarget{"mp43", 60000},
                                           RateTarget{"wmv1", 60000}, RateTarget{"wmv2", 60000},
                                           RateTarget{"h264", 60000}),
                         [](const auto& info) { return TestName(info.param.code); });

// The module's releases come in its own order; any other order finishes the file just
// as well, when the last handle goes. H.264 holds frames back, so a lost flush shows.
TEST_F(AviTest, ReleasesInAnyOrderFinishTheFile) {
  using Order = std::function<void(AviWriter&)>;
  const Order orders[] = {
      [](AviWriter& w) { w.Release(); },
      [](AviWriter& w) {
        w.file = nullptr;
        w.compressed = nullptr;
        w.stream = nullptr;
      },
      [](AviWriter& w) {
        w.compressed = nullptr;
        w.file = nullptr;
        w.stream = nullptr;
      },
  };
  for (const Order& release : orders) {
    std::string path = TempAviPath("order.avi");
    AviJob job = Job("h264");
    job.frames = 10;
    AviWriter writer;
    ASSERT_EQ(writer.Open(path, job), S_OK);
    ASSERT_EQ(writer.WriteSound(job), S_OK);
    for (int frame = 0; frame < job.frames; ++frame) ASSERT_EQ(writer.WriteFrame(job, frame, frame), S_OK);
    release(writer);
    EXPECT_EQ(ReadAvi(path).keyFrames.size(), size_t(job.frames));
    EXPECT_TRUE(SoundIsTheTone(path, job));
  }
}

// The module gives the whole sound before the first frame; the file spreads it over the
// frames.
TEST_F(AviTest, SoundIsInterleavedWithTheFrames) {
  std::string path = TempAviPath("interleaved.avi");
  AviJob job = Job("DIB ");
  ASSERT_EQ(WriteAvi(path, job), S_OK);
  EXPECT_LE(ReadAvi(path).soundLead, 1 / 25.0 + 1e-9);
  EXPECT_TRUE(SoundIsTheTone(path, job));
}

// Sound that comes after the frames goes in as it comes, behind them.
TEST_F(AviTest, SoundAfterTheFramesIsKeptWhole) {
  std::string path = TempAviPath("late.avi");
  AviJob job = Job("DIB ");
  AviWriter writer;
  ASSERT_EQ(writer.Open(path, job), S_OK);
  Microsoft::WRL::ComPtr<IAVIStream> sound;
  ASSERT_EQ(writer.CreateSound(job, &sound), S_OK);
  for (int frame = 0; frame < job.frames; ++frame) ASSERT_EQ(writer.WriteFrame(job, frame, frame), S_OK);
  ASSERT_EQ(WriteTone(sound.Get(), job), S_OK);
  sound = nullptr;
  writer.Release();
  EXPECT_TRUE(SoundIsTheTone(path, job));
}

TEST_F(AviTest, SkippedPositionsRepeatTheFrameBefore) {
  std::string path = TempAviPath("skipped.avi");
  AviJob job = Job("mjpg");
  AviWriter writer;
  ASSERT_EQ(writer.Open(path, job), S_OK);
  for (int position : {0, 1, 4}) ASSERT_EQ(writer.WriteFrame(job, position, position), S_OK);
  writer.Release();
  ReferenceDecoder decoder(path, AV_PIX_FMT_BGR24, job.width, job.height, job.width * 3);
  ReferencePicture picture;
  std::vector<double> times;
  while (decoder.Next(picture)) times.push_back(picture.seconds);
  EXPECT_EQ(times, (std::vector<double>{0, 0.04, 0.16}));
}

// A file past 1 GiB goes on in further RIFF parts, with the OpenDML index that finds
// frames in them.
TEST_F(AviTest, LargeFilesGetTheOpenDmlIndex) {
  std::string path = TempAviPath("large.avi");
  AviJob job = Job("DIB ", 1920, 1080);
  const int frames = 180;  // 6 MB each
  std::vector<uint8_t> dib = PatternDib(job.width, job.height, 0);
  AviWriter writer;
  ASSERT_EQ(writer.Open(path, job), S_OK);
  for (int frame = 0; frame < frames; ++frame)
    ASSERT_EQ(AVIStreamWrite(writer.compressed.Get(), frame, 1, dib.data(), LONG(dib.size()), 0, nullptr, nullptr),
              S_OK);
  writer.Release();

  EXPECT_GT(std::filesystem::file_size(path), uintmax_t(1) << 30);
  std::ifstream file(path, std::ios::binary);
  std::string head(64 << 10, '\0');
  file.read(head.data(), head.size());
  EXPECT_NE(head.find("indx"), std::string::npos);
  EXPECT_NE(head.find("odmldmlh"), std::string::npos);
  // The first part ends with the frame that takes it past 1 GiB, and its index.
  file.seekg(std::streamoff(1) << 30);
  std::string further(8 << 20, '\0');
  file.read(further.data(), further.size());
  EXPECT_NE(further.find("AVIXLIST"), std::string::npos);
  IndexedFrame last = LastFrameThroughIndex(path);
  EXPECT_EQ(last.entries, frames);
  EXPECT_EQ(last.position, frames - 1);
  EXPECT_TRUE(last.bytes == dib) << "the last frame is found whole, in the file's second part";
}

TEST_F(AviTest, AFullDiskFailsTheWrite) {
  if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "no /dev/full";
  AviJob job = Job("DIB ", 1920, 1080);
  AviWriter writer;
  ASSERT_EQ(writer.Open("/dev/full", job), S_OK);
  EXPECT_EQ(writer.WriteFrame(job, 0, 0), AVIERR_FILEWRITE);
  EXPECT_EQ(writer.WriteFrame(job, 1, 1), AVIERR_FILEWRITE);
}

TEST_F(AviTest, TheFileIsCreatedWhenOpenedAndReplacesOneThatIsThere) {
  std::string path = TempAviPath("created.avi");
  std::ofstream(path) << "an older file";
  Microsoft::WRL::ComPtr<IAVIFile> file;
  ASSERT_EQ(AVIFileOpenW(&file, Wide(path).c_str(), OF_WRITE | OF_CREATE, nullptr), S_OK);
  EXPECT_EQ(std::filesystem::file_size(path), 0u);
}

TEST_F(AviTest, StartUpsAreCountedAndFilesNeedOne) {
  TesselPlatformCounters before = TesselPlatformGetCounters();
  AVIFileExit();
  Microsoft::WRL::ComPtr<IAVIFile> file;
  EXPECT_EQ(AVIFileOpenW(&file, Wide(TempAviPath("none.avi")).c_str(), OF_WRITE | OF_CREATE, nullptr),
            CO_E_NOTINITIALIZED);
  AVIFileInit();
  TesselPlatformCounters after = TesselPlatformGetCounters();
  EXPECT_EQ(after.aviExitCalls, before.aviExitCalls + 1);
  EXPECT_EQ(after.aviInitCalls, before.aviInitCalls + 1);
}

// What can't be written, each with its status, and the status's text.
struct Refusal {
  const char* what;
  HRESULT status;
  std::function<HRESULT(const std::string& path)> attempt;
};

HRESULT OpenWith(const std::string& path, AviJob job) {
  AviWriter writer;
  return writer.Open(path, job);
}

AVISTREAMINFOW StreamInfo(DWORD type, DWORD rate = 0, DWORD scale = 0) {
  AVISTREAMINFOW info{};
  info.fccType = type;
  info.dwRate = rate;
  info.dwScale = scale;
  return info;
}

HRESULT CreateStream(const std::string& path, AVISTREAMINFOW info) {
  Microsoft::WRL::ComPtr<IAVIFile> file;
  Microsoft::WRL::ComPtr<IAVIStream> stream;
  HRESULT hr = AVIFileOpenW(&file, Wide(path).c_str(), OF_WRITE | OF_CREATE, nullptr);
  return SUCCEEDED(hr) ? AVIFileCreateStreamW(file.Get(), &stream, &info) : hr;
}

HRESULT SetFrameFormat(const std::string& path, BITMAPINFOHEADER header) {
  AviWriter writer;
  AviJob job = Job("DIB ");
  writer.Open(path, job);
  return AVIStreamSetFormat(writer.stream.Get(), 0, &header, sizeof(header));
}

HRESULT WriteSoundBlocks(const std::string& path, WAVEFORMATEX wave, LONG blocks, LONG bytes) {
  AviWriter writer;
  writer.Open(path, Job("DIB "));
  AVISTREAMINFOW info = StreamInfo(streamtypeAUDIO);
  Microsoft::WRL::ComPtr<IAVIStream> sound;
  std::vector<uint8_t> samples(size_t(std::max(bytes, 0)));
  HRESULT hr = AVIFileCreateStreamW(writer.file.Get(), &sound, &info);
  if (SUCCEEDED(hr)) hr = AVIStreamSetFormat(sound.Get(), 0, &wave, sizeof(wave));
  if (SUCCEEDED(hr)) hr = AVIStreamWrite(sound.Get(), 0, blocks, samples.data(), bytes, 0, nullptr, nullptr);
  return hr;
}

const WAVEFORMATEX kStereo16{WAVE_FORMAT_PCM, 2, 48000, 192000, 4, 16, 0};

const Refusal kRefusals[] = {
    {"a code without compressor", AVIERR_NOCOMPRESSOR, [](auto& p) { return OpenWith(p, Job("abcd")); }},
    {"a quality above 10000", AVIERR_BADPARAM,
     [](auto& p) {
       AviJob job = Job("mjpg");
       job.quality = 10001;
       return OpenWith(p, job);
     }},
    {"Video 1 at 66 by 64", AVIERR_BADFORMAT, [](auto& p) { return OpenWith(p, Job("msvc", 66, 64)); }},
    {"Cinepak at 64 by 66", AVIERR_BADFORMAT, [](auto& p) { return OpenWith(p, Job("cvid", 64, 66)); }},
    {"I420 at 65 by 64", AVIERR_BADFORMAT, [](auto& p) { return OpenWith(p, Job("iyuv", 65, 64)); }},
    {"H.264 at 64 by 65", AVIERR_BADFORMAT, [](auto& p) { return OpenWith(p, Job("h264", 64, 65)); }},
    {"9000 by 9000 frames", AVIERR_BADFORMAT, [](auto& p) { return OpenWith(p, Job("mjpg", 9000, 9000)); }},
    {"a missing folder", AVIERR_FILEOPEN, [](auto& p) { return OpenWith(p + ".d/movie.avi", Job("DIB ")); }},
    {"a file not created", AVIERR_UNSUPPORTED,
     [](auto& p) {
       Microsoft::WRL::ComPtr<IAVIFile> file;
       return AVIFileOpenW(&file, Wide(p).c_str(), OF_WRITE, nullptr);
     }},
    {"a text stream", AVIERR_UNSUPPORTED, [](auto& p) { return CreateStream(p, StreamInfo(streamtypeTEXT, 25, 1)); }},
    {"a video stream without rate", AVIERR_BADPARAM,
     [](auto& p) { return CreateStream(p, StreamInfo(streamtypeVIDEO, 0, 1)); }},
    {"16-bit frames", AVIERR_BADFORMAT,
     [](auto& p) { return SetFrameFormat(p, {40, 64, 64, 1, 16, BI_RGB, 0, 0, 0, 0, 0}); }},
    {"top-down frames in the file", AVIERR_BADFORMAT,
     [](auto& p) { return SetFrameFormat(p, {40, 64, -64, 1, 24, BI_RGB, 0, 0, 0, 0, 0}); }},
    {"a codec the file doesn't know", AVIERR_BADFORMAT,
     [](auto& p) { return SetFrameFormat(p, {40, 64, 64, 1, 24, mmioFOURCC('z', 'z', 'z', 'z'), 0, 0, 0, 0, 0}); }},
    {"a frame smaller than its format", AVIERR_BADSIZE,
     [](auto& p) {
       AviWriter writer;
       writer.Open(p, Job("mjpg"));
       std::vector<uint8_t> half(64 * 64 * 3 / 2);
       return AVIStreamWrite(writer.compressed.Get(), 0, 1, half.data(), LONG(half.size()), 0, nullptr, nullptr);
     }},
    {"a frame before the last one", AVIERR_BADPARAM,
     [](auto& p) {
       AviWriter writer;
       AviJob job = Job("mjpg");
       writer.Open(p, job);
       writer.WriteFrame(job, 3, 0);
       return writer.WriteFrame(job, 2, 0);
     }},
    {"a stream after the first frame", AVIERR_UNSUPPORTED,
     [](auto& p) {
       AviWriter writer;
       AviJob job = Job("DIB ");
       writer.Open(p, job);
       writer.WriteFrame(job, 0, 0);
       return writer.WriteSound(job);
     }},
    {"sound of another size than its blocks", AVIERR_BADSIZE,
     [](auto& p) { return WriteSoundBlocks(p, kStereo16, 10, 39); }},
    {"sound with a wrong block size", AVIERR_BADFORMAT,
     [](auto& p) { return WriteSoundBlocks(p, {WAVE_FORMAT_PCM, 2, 48000, 288000, 6, 16, 0}, 10, 60); }},
    {"sound that isn't PCM", AVIERR_BADFORMAT,
     [](auto& p) { return WriteSoundBlocks(p, {3, 2, 48000, 384000, 8, 32, 0}, 10, 80); }},
    {"no stream", AVIERR_BADHANDLE,
     [](auto&) { return AVIStreamWrite(nullptr, 0, 1, nullptr, 0, 0, nullptr, nullptr); }},
};

TEST_F(AviTest, WhatCannotBeWrittenGivesItsStatusAndText) {
  for (const Refusal& refusal : kRefusals) {
    EXPECT_EQ(refusal.attempt(TempAviPath("refused.avi")), refusal.status) << refusal.what;
    char16_t text[256];
    EXPECT_GT(FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM, nullptr, DWORD(refusal.status), 0, text, 256, nullptr), 0u)
        << refusal.what;
  }
}

}  // namespace
}  // namespace tessel::platform_test
