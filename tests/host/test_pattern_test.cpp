#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "host_environment.h"
#include "vorna/errorbase.h"
#include "vorna/mediasession_keys.h"
#include "vorna_sinks.h"
#include "vorna_test_pattern.h"

namespace vorna {
namespace {

struct Connected {
  MediaConverter source;
  std::shared_ptr<vorna::host::ImageSink> image;
  std::shared_ptr<vorna::host::AudioSink> audio;
};

// The source analysed, with sinks on both of its streams and both subscribed.
Connected Connect(const vorna::host::TestPatternOptions& options) {
  Connected connected;
  Result<MediaConverter> made = vorna::host::CreateTestPatternSource(options);
  EXPECT_FALSE(made.IsError());
  connected.source = made.GetValue();
  EXPECT_TRUE(Cast<MediaInputInterface>(connected.source));
  EXPECT_FALSE(connected.source.Analyze({}, 0, 0).IsError());
  BaseArray<MediaStream> streams = connected.source.GetOutputStreams(0).GetValue();
  EXPECT_EQ(streams.GetCount(), 2);
  connected.image = vorna::host::AttachImageSink(streams[0], "vorna.PixelFormats.RGBA:u8");
  connected.audio = vorna::host::AttachAudioSink(streams[1]);
  EXPECT_TRUE(connected.image && connected.audio);
  EXPECT_FALSE(streams[0].SubscribeStream(MakeData(Int64(1))).IsError());
  EXPECT_FALSE(streams[1].SubscribeStream(MakeData(Int64(0))).IsError());
  return connected;
}

TEST(TestPatternSourceTest, DeliversTheFrameOfATimeLikeALoader) {
  Connected c = Connect({64, 48, 25.0, 1.0, 440.0, 48000, false, "srgb"});
  ASSERT_FALSE(c.source.Execute({}, TimeValue(0.2), 0).IsError());
  vorna::host::ImageFrame frame = c.image->GetFrame();
  ASSERT_EQ(frame.width, 64);
  ASSERT_EQ(frame.height, 48);
  EXPECT_EQ(frame.deliveredLines, 48);
  ASSERT_TRUE(frame.sampleTime.has_value());
  EXPECT_DOUBLE_EQ(*frame.sampleTime, 0.2);
  for (int y : {0, 3, 47})
    for (int x : {0, 17, 63}) {
      const uint8_t* pixel = &frame.pixels[size_t(y * frame.bytesPerLine + x * 4)];
      EXPECT_EQ(pixel[0], x) << "red is the column";
      EXPECT_EQ(pixel[1], y) << "green is the line";
      EXPECT_EQ(pixel[2], 5) << "blue is the frame at 0.2 s and 25 fps";
      EXPECT_EQ(pixel[3], 255);
    }
  ASSERT_FALSE(c.source.Execute({}, TimeValue(0.21), 0).IsError());
  EXPECT_EQ(c.image->GetFrameCount(), 1) << "the same frame again goes out only when forced";
  ASSERT_FALSE(c.source.Execute({}, TimeValue(0.21), MEDIASESSIONFLAGS_FORCE).IsError());
  EXPECT_EQ(c.image->GetFrameCount(), 2);
  EXPECT_TRUE(IsErrorOfClass(c.source.Execute({}, TimeValue(1.0), 0).GetError(), g_MediaStreamEOFErrorObject));
}

TEST(TestPatternSourceTest, TheImageFormatTellsThePixelAspect) {
  for (Float64 aspect : {1.0, 16.0 / 15.0}) {
    vorna::host::TestPatternOptions options;
    options.pixelAspect = aspect;
    Connected c = Connect(options);
    BaseArray<MediaStream> streams = c.source.GetOutputStreams(0).GetValue();
    Result<Float64> told = streams[0].GetFormat(MakeData(Int64(1))).Get<Float64>(g_mediaFormatImageAspectratio);
    ASSERT_FALSE(told.IsError());
    EXPECT_EQ(told.GetValue(), aspect);
  }
}

TEST(TestPatternSourceTest, DeliversTheWholeToneOnceAtTheFirstExecute) {
  vorna::host::TestPatternOptions options{16, 16, 25.0, 1.5, 1000.0, 8000, false, "srgb"};
  Connected c = Connect(options);
  ASSERT_FALSE(c.source.Execute({}, TimeValue(0.7), 0).IsError());
  ASSERT_FALSE(c.source.Execute({}, TimeValue(0.0), 0).IsError());
  EXPECT_EQ(c.audio->GetBlockCount(), 3) << "12000 samples in blocks of 4096";
  std::vector<uint8_t> bytes = c.audio->GetBytes();
  ASSERT_EQ(bytes.size(), 12000u * 4);
  const auto* samples = reinterpret_cast<const Int16*>(bytes.data());
  EXPECT_EQ(samples[0], 0);
  EXPECT_EQ(samples[2 * 4097], samples[2 * 4097 + 1]) << "both channels";
  EXPECT_EQ(samples[2 * 4097], Int16(std::lround(8192.0 * std::sin(2.0 * M_PI * 1000.0 * 4097.0 / 8000.0))));
}

TEST(TestPatternSourceTest, AbsurdOptionsAreRefused) {
  const vorna::host::TestPatternOptions kAbsurd[] = {
      {0, 16, 25.0, 1.0, 0.0, 48000, false, "srgb"},     {16, 16, 0.0, 1.0, 0.0, 48000, false, "srgb"},
      {16, 16, 25.0, 1e300, 0.0, 48000, false, "srgb"},  {16, 16, 25.0, 1.0, 0.0, 48000, false, "no such profile"},
      {100000, 16, 25.0, 1.0, 0.0, 48000, false, "srgb"},
  };
  for (const auto& options : kAbsurd)
    EXPECT_TRUE(IsErrorOfClass(vorna::host::CreateTestPatternSource(options).GetError(), g_IllegalArgumentErrorObject));
}

}  // namespace
}  // namespace vorna
