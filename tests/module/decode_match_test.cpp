// Frames and sound read through the loaded module match FFmpeg's own decode: every
// frame of a clip fetched at its sample time, in order and in random order, after the
// same colour conversion and the same turn or square-pixel scaling; and the sound's
// bytes are the decoder's samples.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "fixtures.h"
#include "host_environment.h"
#include "loaded_module.h"
#include "reference_decoder.h"
#include "vorna/datatypes.h"
#include "vorna_session.h"
#include "vorna_sinks.h"

namespace vorna {
namespace {

using vorna::host::ReadingSession;
using tessel::testing::WithLoadedModule;
namespace fixtures = tessel::fixtures;

constexpr double MIN_PSNR = 40.0;

// A picture of 4-byte pixels turned a quarter clockwise: width x height becomes
// height x width.
std::vector<uint8_t> TurnClockwise(const std::vector<uint8_t>& pixels, int width, int height) {
  std::vector<uint8_t> turned(pixels.size());
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x)
      std::memcpy(&turned[(size_t(x) * height + (height - 1 - y)) * 4], &pixels[(size_t(y) * width + x) * 4], 4);
  return turned;
}

struct Case {
  const char* name;
  fixtures::Clip clip;
  Int64 formatKey;
  int width;   // of the delivered frame
  int height;
  bool turned;  // the reference is turned a quarter clockwise
};

void PrintTo(const Case& c, std::ostream* os) { *os << c.name; }

// Reference pictures of a case, in presentation order, as the module should deliver them.
std::vector<fixtures::ReferencePicture> ReferencePictures(const Case& c) {
  int decodedWidth = c.turned ? c.height : c.width;
  int decodedHeight = c.turned ? c.width : c.height;
  fixtures::ReferenceDecoder decoder(fixtures::Path(c.clip.name), AV_PIX_FMT_RGBA, decodedWidth, decodedHeight,
                                     decodedWidth * 4);
  std::vector<fixtures::ReferencePicture> pictures;
  fixtures::ReferencePicture picture;
  while (decoder.Next(picture)) {
    if (c.turned) picture.pixels = TurnClockwise(picture.pixels, decodedWidth, decodedHeight);
    pictures.push_back(picture);
  }
  return pictures;
}

class DecodeMatchTest : public WithLoadedModule<::testing::TestWithParam<Case>> {
 protected:
  void TearDown() override {
    _session.reset();
    WithLoadedModule::TearDown();
  }

  void Open(const std::string& path, Int64 formatKey) {
    Url url;
    ASSERT_FALSE(url.Set(path.c_str()).IsError());
    auto opened = ReadingSession::Open(url);
    ASSERT_FALSE(opened.IsError());
    _session = std::move(opened.GetValue());
    ASSERT_GE(_session->GetStreams().GetCount(), 1);
    _sink = vorna::host::AttachImageSink(_session->GetStreams()[0], "vorna.PixelFormats.RGBA:u8");
    ASSERT_TRUE(_sink);
    ASSERT_FALSE(_session->Subscribe(0, MakeData(formatKey)).IsError());
    ASSERT_FALSE(_session->PrepareExecute().IsError());
  }

  // The frame delivered for seconds, top line first, 4 bytes a pixel, no padding.
  std::vector<uint8_t> FrameAt(double seconds) {
    EXPECT_FALSE(_session->Execute(TimeValue(seconds), MEDIASESSIONFLAGS_FORCE).IsError()) << seconds;
    vorna::host::ImageFrame frame = _sink->GetFrame();
    std::vector<uint8_t> packed;
    for (int64_t y = 0; y < frame.height; ++y) {
      const uint8_t* line = frame.pixels.data() + y * frame.bytesPerLine;
      packed.insert(packed.end(), line, line + frame.width * 4);
    }
    _lastWidth = int(frame.width);
    _lastHeight = int(frame.height);
    return packed;
  }

  std::unique_ptr<ReadingSession> _session;
  std::shared_ptr<vorna::host::ImageSink> _sink;
  int _lastWidth = 0;
  int _lastHeight = 0;
};

TEST_P(DecodeMatchTest, EveryFrameMatchesInOrderAndInRandomOrder) {
  const Case& c = GetParam();
  std::vector<fixtures::ReferencePicture> pictures = ReferencePictures(c);
  ASSERT_EQ(int(pictures.size()), c.clip.frames);
  Open(fixtures::Path(c.clip.name), c.formatKey);

  std::vector<std::vector<uint8_t>> inOrder;
  for (size_t i = 0; i < pictures.size(); ++i) {
    inOrder.push_back(FrameAt(pictures[i].seconds));
    ASSERT_EQ(_lastWidth, c.width);
    ASSERT_EQ(_lastHeight, c.height);
    EXPECT_GE(fixtures::Psnr(inOrder.back(), pictures[i].pixels), MIN_PSNR) << "frame " << i;
  }

  std::vector<size_t> order(pictures.size());
  for (size_t i = 0; i < order.size(); ++i) order[i] = i;
  std::shuffle(order.begin(), order.end(), std::mt19937(20261122));
  for (size_t i : order) EXPECT_TRUE(FrameAt(pictures[i].seconds) == inOrder[i]) << "frame " << i;
}

INSTANTIATE_TEST_SUITE_P(Clips, DecodeMatchTest,
                         ::testing::Values(Case{"full_hd", fixtures::kMovie1080, 1, 1920, 1080, false},
                                           Case{"anamorphic", fixtures::kAnamorphicPal, 1, 720, 576, false},
                                           Case{"anamorphic_square", fixtures::kAnamorphicPal, -1, 768, 576, false},
                                           Case{"turned", fixtures::kRotated90, 1, 160, 240, true}),
                         [](const auto& info) { return std::string(info.param.name); });

using SoundMatchTest = DecodeMatchTest;

TEST_F(SoundMatchTest, SoundIsTheDecodersSamples) {
  std::vector<uint8_t> expected = fixtures::ReferenceSound(fixtures::Path(fixtures::kMovieAac.name), AV_SAMPLE_FMT_S16);
  ASSERT_FALSE(expected.empty());
  Url url;
  ASSERT_FALSE(url.Set(fixtures::Path(fixtures::kMovieAac.name).c_str()).IsError());
  auto opened = ReadingSession::Open(url);
  ASSERT_FALSE(opened.IsError());
  _session = std::move(opened.GetValue());
  const auto& streams = _session->GetStreams();
  ASSERT_EQ(streams.GetCount(), 2);
  auto sink = vorna::host::AttachAudioSink(streams[1]);
  ASSERT_TRUE(sink);
  ASSERT_FALSE(_session->Subscribe(1, MakeData(Int64(0))).IsError());
  ASSERT_FALSE(_session->PrepareExecute().IsError());
  ASSERT_FALSE(_session->Execute(TimeValue(0.0), 0).IsError());
  std::vector<uint8_t> delivered = sink->GetBytes();
  ASSERT_EQ(delivered.size(), expected.size());
  size_t off = 0;
  for (size_t i = 0; i + 1 < delivered.size(); i += 2) {
    int a = int16_t(delivered[i] | delivered[i + 1] << 8);
    int b = int16_t(expected[i] | expected[i + 1] << 8);
    if (std::abs(a - b) > 1) ++off;
  }
  EXPECT_EQ(off, 0u);
}

}  // namespace
}  // namespace vorna
