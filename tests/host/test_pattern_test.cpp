#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "host_environment.h"
#include "vorna/audioobject.h"
#include "vorna/errorbase.h"
#include "vorna/mediasession_keys.h"
#include "vorna_test_pattern.h"

namespace vorna {
namespace {

TEST(TestPatternSourceTest, ImageStreamGivesThePatternInTheFormatAskedFor) {
  Result<MediaConverter> made = vorna::host::CreateTestPatternSource({64, 48, 25.0, 1.0, 440.0, 48000});
  ASSERT_FALSE(made.IsError());
  MediaConverter source = made.GetValue();
  ASSERT_TRUE(Cast<MediaInputInterface>(source));
  ASSERT_FALSE(source.Analyze({}, 0, 0).IsError());
  Result<BaseArray<MediaStream>> streams = source.GetOutputStreams(1);
  ASSERT_EQ(streams.GetValue().GetCount(), 2);
  MediaStreamImageDataExportInterface image = Cast<MediaStreamImageDataExportInterface>(streams.GetValue()[0]);
  ASSERT_TRUE(image);
  EXPECT_EQ(image.GetFormat(MakeData(Int64(1))).Get<Int64>(g_mediaFormatImageWidth).GetValue(), 64);

  ASSERT_FALSE(source.Execute({}, TimeValue(0.2), 0).IsError());
  PixelFormat bgrx = GetPixelFormat(g_pixelFormatBGRXu8);
  Result<GetPixelHandlerStruct<>> handler =
      image.GetPixelStream(MediaStreamPropertiesInterface(), bgrx, bgrx.GetChannelOffsets(), ColorProfile(), 1);
  ASSERT_FALSE(handler.IsError());
  std::vector<UChar> line(64 * 4);
  ASSERT_FALSE(handler.GetValue().getLine(LineRange{0, 3, 64}, LineDestination{line.data(), 32}, 0).IsError());
  for (int x : {0, 17, 63}) {
    EXPECT_EQ(line[size_t(x * 4 + 0)], 5) << "blue is the frame at 0.2 s and 25 fps";
    EXPECT_EQ(line[size_t(x * 4 + 1)], 3) << "green is the line";
    EXPECT_EQ(line[size_t(x * 4 + 2)], x) << "red is the column";
  }
  EXPECT_TRUE(handler.GetValue().getLine(LineRange{0, 48, 64}, LineDestination{line.data(), 32}, 0).IsError());
  EXPECT_TRUE(IsErrorOfClass(source.Execute({}, TimeValue(1.0), 0).GetError(), g_MediaStreamEOFErrorObject));
}

TEST(TestPatternSourceTest, AudioStreamHoldsTheWholeTone) {
  Result<MediaConverter> made = vorna::host::CreateTestPatternSource({16, 16, 25.0, 0.5, 1000.0, 8000});
  ASSERT_FALSE(made.IsError());
  ASSERT_FALSE(made.GetValue().Analyze({}, 0, 0).IsError());
  MediaStreamAudioDataExportInterface audioStream =
      Cast<MediaStreamAudioDataExportInterface>(made.GetValue().GetOutputStreams(1).GetValue()[1]);
  AudioObjectInterface audio = Cast<AudioObjectInterface>(audioStream.GetAudioObject());
  ASSERT_TRUE(audio);
  EXPECT_EQ(audio.GetSampleCount(), 4000);
  EXPECT_EQ(audio.GetChannelCount(), 2);
  const auto* samples = reinterpret_cast<const Int16*>(audio.GetDataPtr().data);
  EXPECT_EQ(samples[0], 0);
  EXPECT_EQ(samples[4], samples[5]) << "both channels";
  EXPECT_EQ(samples[4], Int16(std::lround(8192.0 * std::sin(2.0 * M_PI * 1000.0 * 2.0 / 8000.0))));
}

TEST(TestPatternSourceTest, AbsurdOptionsAreRefused) {
  EXPECT_TRUE(IsErrorOfClass(vorna::host::CreateTestPatternSource({0, 16, 25.0, 1.0, 0.0, 48000}).GetError(),
                             g_IllegalArgumentErrorObject));
}

}  // namespace
}  // namespace vorna
