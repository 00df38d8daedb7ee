// The uncompressed outputs: which the reader accepts under each processing mode, and
// that each delivers the pixels or sound FFmpeg's own decode gives.
#include <gtest/gtest.h>

#include "fixtures.h"
#include "reader_support.h"
#include "reference_decoder.h"

namespace tessel::platform_test {
namespace {

using namespace tessel::fixtures;

struct Output {
  const char* name;
  const GUID* subtype;
  AVPixelFormat reference;
  int bytesPerPixel;
};

const Output kOutputs[] = {
    {"RGB32", &MFVideoFormat_RGB32, AV_PIX_FMT_BGRA, 4},       {"ARGB32", &MFVideoFormat_ARGB32, AV_PIX_FMT_BGRA, 4},
    {"RGB24", &MFVideoFormat_RGB24, AV_PIX_FMT_BGR24, 3},      {"RGB555", &MFVideoFormat_RGB555, AV_PIX_FMT_RGB555LE, 2},
    {"RGB565", &MFVideoFormat_RGB565, AV_PIX_FMT_RGB565LE, 2}, {"YUY2", &MFVideoFormat_YUY2, AV_PIX_FMT_YUYV422, 2},
    {"YVYU", &MFVideoFormat_YVYU, AV_PIX_FMT_YVYU422, 2},
};

class ReaderOutput : public ::testing::TestWithParam<Output> {};

TEST_P(ReaderOutput, FramesMatchFfmpegsOwnDecode) {
  const Output& output = GetParam();
  auto reader = OpenReader(kMovieAac.name, Processing::kAdvanced);
  ASSERT_EQ(reader->SetCurrentMediaType(0, nullptr, OutputType(MFMediaType_Video, *output.subtype).Get()), S_OK);
  ComPtr<IMFMediaType> current;
  ASSERT_EQ(reader->GetCurrentMediaType(0, &current), S_OK);
  LONG stride = LONG(MFGetAttributeUINT32(current.Get(), MF_MT_DEFAULT_STRIDE, 0));
  EXPECT_EQ(stride, 320 * output.bytesPerPixel);
  VideoFrame frame;
  for (int index = 0; index < 14; ++index) {
    ASSERT_TRUE(ReadVideoFrame(reader.Get(), 0, *output.subtype, &frame));
    if (index != 0 && index != 13) continue;
    EXPECT_EQ(FrameNumber(frame, *output.subtype), index);
    auto expected = ReferenceFrame(ClipPath(kMovieAac.name), index, output.reference, 320, 240, frame.pitch);
    EXPECT_GE(Psnr(frame.rows, expected), 40.0) << output.name << " frame " << index;
  }
}

TEST_P(ReaderOutput, ScaledFramesMatchFfmpegsOwnScaling) {
  const Output& output = GetParam();
  auto reader = OpenReader(kAnamorphicPal.name, Processing::kAdvanced);
  ASSERT_EQ(reader->SetCurrentMediaType(0, nullptr, OutputType(MFMediaType_Video, *output.subtype, 768, 576).Get()),
            S_OK);
  VideoFrame frame;
  ASSERT_TRUE(ReadVideoFrame(reader.Get(), 0, *output.subtype, &frame));
  EXPECT_EQ(frame.width, 768);
  EXPECT_EQ(FrameNumber(frame, *output.subtype), 0);
  auto expected = ReferenceFrame(ClipPath(kAnamorphicPal.name), 0, output.reference, 768, 576, frame.pitch);
  EXPECT_GE(Psnr(frame.rows, expected), 40.0) << output.name;
}

INSTANTIATE_TEST_SUITE_P(Subtypes, ReaderOutput, ::testing::ValuesIn(kOutputs),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(ReaderOutputModes, WhatEachProcessingModeAccepts) {
  struct Expectation {
    Processing processing;
    const GUID* subtype;
    UINT32 width;
    HRESULT status;
  };
  const Expectation table[] = {
      {Processing::kNone, &MFVideoFormat_YUY2, 0, S_OK},
      {Processing::kNone, &MFVideoFormat_RGB32, 0, MF_E_INVALIDMEDIATYPE},
      {Processing::kBasic, &MFVideoFormat_RGB32, 0, S_OK},
      {Processing::kBasic, &MFVideoFormat_YUY2, 0, S_OK},
      {Processing::kBasic, &MFVideoFormat_RGB24, 0, MF_E_INVALIDMEDIATYPE},
      {Processing::kBasic, &MFVideoFormat_RGB32, 640, MF_E_INVALIDMEDIATYPE},
      {Processing::kAdvanced, &MFVideoFormat_RGB24, 0, S_OK},
      {Processing::kAdvanced, &MFVideoFormat_RGB32, 640, S_OK},
      {Processing::kAdvanced, &MFVideoFormat_NV12, 0, MF_E_INVALIDMEDIATYPE},
      {Processing::kAdvanced, &MFAudioFormat_PCM, 0, MF_E_INVALIDMEDIATYPE},
      {Processing::kAdvanced, &MFVideoFormat_RGB32, 100000, MF_E_INVALIDMEDIATYPE},
  };
  for (const Expectation& e : table) {
    auto reader = OpenReader(kMovieAac.name, e.processing);
    auto type = OutputType(MFMediaType_Video, *e.subtype, e.width, e.width * 3 / 4);
    EXPECT_EQ(reader->SetCurrentMediaType(0, nullptr, type.Get()), e.status)
        << "processing " << int(e.processing) << " subtype " << std::hex << e.subtype->Data1 << " width "
        << std::dec << e.width;
  }
}

TEST(ReaderOutputModes, RefusedTypeKeepsTheCurrentOne) {
  auto reader = OpenReader(kMovieAac.name, Processing::kAdvanced);
  ASSERT_EQ(reader->SetCurrentMediaType(0, nullptr, OutputType(MFMediaType_Video, MFVideoFormat_RGB24).Get()), S_OK);
  EXPECT_EQ(reader->SetCurrentMediaType(0, nullptr, OutputType(MFMediaType_Video, MFVideoFormat_NV12).Get()),
            MF_E_INVALIDMEDIATYPE);
  ComPtr<IMFMediaType> current;
  ASSERT_EQ(reader->GetCurrentMediaType(0, &current), S_OK);
  GUID subtype;
  current->GetGUID(MF_MT_SUBTYPE, &subtype);
  EXPECT_EQ(subtype, MFVideoFormat_RGB24);
}

// A reader of the sound of clip, put out in subtype at bits a sample.
ComPtr<IMFSourceReader> SoundReader(const char* clip, const GUID& subtype, UINT32 bits) {
  auto reader = OpenReader(clip, Processing::kAdvanced);
  auto type = OutputType(MFMediaType_Audio, subtype);
  type->SetUINT32(MF_MT_AUDIO_BITS_PER_SAMPLE, bits);
  EXPECT_EQ(reader->SetCurrentMediaType(0, nullptr, type.Get()), S_OK) << clip << " as " << bits << " bits";
  return reader;
}

// The bytes of the first sound sample of reader.
std::vector<BYTE> FirstSampleBytes(IMFSourceReader* reader) {
  DWORD flags = 0;
  ComPtr<IMFSample> sample;
  EXPECT_EQ(reader->ReadSample(0, 0, nullptr, &flags, nullptr, &sample), S_OK);
  ComPtr<IMFMediaBuffer> buffer;
  if (!sample || FAILED(sample->ConvertToContiguousBuffer(&buffer))) return {};
  BYTE* data = nullptr;
  DWORD length = 0;
  buffer->Lock(&data, nullptr, &length);
  std::vector<BYTE> bytes(data, data + length);
  buffer->Unlock();
  return bytes;
}

struct SoundCase {
  const char* clip;
  const GUID* subtype;
  UINT32 bits;
};

class ReaderSound : public ::testing::TestWithParam<SoundCase> {};

// The whole of each file comes out: a second of 48 kHz stereo in the asked format.
TEST_P(ReaderSound, WavesComeOutWhole) {
  const SoundCase& c = GetParam();
  auto reader = SoundReader(c.clip, *c.subtype, c.bits);
  ComPtr<IMFMediaType> current;
  ASSERT_EQ(reader->GetCurrentMediaType(0, &current), S_OK);
  EXPECT_EQ(MFGetAttributeUINT32(current.Get(), MF_MT_AUDIO_BLOCK_ALIGNMENT, 0), 2 * c.bits / 8);
  uint64_t bytes = 0;
  for (int guard = 0; guard < 10000; ++guard) {
    DWORD flags = 0;
    ComPtr<IMFSample> sample;
    ASSERT_EQ(reader->ReadSample(0, 0, nullptr, &flags, nullptr, &sample), S_OK);
    if (flags & MF_SOURCE_READERF_ENDOFSTREAM) break;
    DWORD length = 0;
    sample->GetTotalLength(&length);
    bytes += length;
  }
  EXPECT_EQ(bytes, 48000ull * 2 * c.bits / 8) << c.clip;
}

INSTANTIATE_TEST_SUITE_P(Formats, ReaderSound,
                         ::testing::Values(SoundCase{kWav16, &MFAudioFormat_PCM, 16},
                                           SoundCase{kWav24, &MFAudioFormat_PCM, 24},
                                           SoundCase{kWav32, &MFAudioFormat_Float, 32},
                                           SoundCase{kWav16, &MFAudioFormat_PCM, 8},
                                           SoundCase{kWav24, &MFAudioFormat_PCM, 32}),
                         [](const auto& info) {
                           return TestName(info.param.clip) + "_as_" + std::to_string(info.param.bits) + "_bits";
                         });

TEST(ReaderSoundValues, TwentyFourBitsKeepTheHighBytes) {
  std::vector<BYTE> bytes16 = FirstSampleBytes(SoundReader(kWav16, MFAudioFormat_PCM, 16).Get());
  std::vector<BYTE> bytes24 = FirstSampleBytes(SoundReader(kWav16, MFAudioFormat_PCM, 24).Get());
  size_t samples = std::min(bytes16.size() / 2, bytes24.size() / 3);
  ASSERT_GT(samples, 0u);
  for (size_t i = 0; i < samples; ++i) {
    ASSERT_EQ(bytes16[i * 2], bytes24[i * 3 + 1]) << i;
    ASSERT_EQ(bytes16[i * 2 + 1], bytes24[i * 3 + 2]) << i;
  }
}

}  // namespace
}  // namespace tessel::platform_test
