#include "vorna/translationunit.h"

#include <gtest/gtest.h>

#include <thread>

#include "host_environment.h"
#include "published_objects.h"
#include "vorna/component.h"
#include "vorna/mediasession_keys.h"
#include "vorna/mediasession_stream.h"
#include "vorna_sinks.h"

namespace vorna {
namespace {

VORNA_DEFINE_OBJECT_USE(g_imageImportClass, "vorna.MediaStreamImageDataImportClass");
VORNA_DEFINE_OBJECT_USE(g_audioImportClass, "vorna.MediaStreamAudioDataImportClass");
VORNA_DEFINE_OBJECT_USE(g_propertiesClass, "vorna.MediaStreamPropertiesClass");
VORNA_DEFINE_OBJECT_USE(g_bgr, "vorna.PixelFormats.BGR:u8");

MediaStreamProperties FrameProperties(Int64 width, Int64 height) {
  MediaStreamProperties properties = tessel::testing::MakeObject<MediaStreamPropertiesInterface>(g_propertiesClass);
  static void* const none = nullptr;
  ObjectInterface bgr(*static_cast<void* const*>(LookupObjectValue(g_bgr, &none)));
  EXPECT_FALSE(properties.SetData(g_mediaFormatImageWidth, width).IsError());
  EXPECT_FALSE(properties.SetData(g_mediaFormatImageHeight, height).IsError());
  EXPECT_FALSE(properties.SetData(g_mediaFormatImagePixelformat, MakeObjectData(bgr, g_cowReferenceType)).IsError());
  return properties;
}

TEST(ImageSinkTest, LinesInAnyOrderFromSeveralThreadsLandInTheWantedFormat) {
  StrongRef<MediaStreamImageDataImportInterface> stream = tessel::testing::MakeObject<MediaStreamImageDataImportInterface>(g_imageImportClass);
  ASSERT_TRUE(stream);
  auto sink = vorna::host::AttachImageSink(stream, "vorna.PixelFormats.RGBA:u8");
  ASSERT_TRUE(sink);
  MediaStreamProperties properties = FrameProperties(2, 4);
  ASSERT_FALSE(stream.InitStream(properties).IsError());
  // A 2x4 BGR source whose pixel (x, y) has blue x, green y, red 9; each output line is
  // read backwards, as for a frame turned by 180 degrees.
  UChar source[4][2][3];
  for (int y = 0; y < 4; ++y)
    for (int x = 0; x < 2; ++x) source[y][x][0] = UChar(x), source[y][x][1] = UChar(y), source[y][x][2] = 9;
  auto deliver = [&](int firstLine) {
    Result<SetPixelHandlerStruct> handler = stream.SetPixelStream(properties, ChannelOffsets{}, 0);
    ASSERT_FALSE(handler.IsError());
    for (int y = firstLine; y >= 0; y -= 2) {
      LineSource line{&source[3 - y][1][0], -24};
      ASSERT_FALSE(handler.GetValue().setLine(LineRange{0, y, 2}, line, 0).IsError());
    }
  };
  std::thread other(deliver, 3);
  deliver(2);
  other.join();
  ASSERT_FALSE(stream.FinishStream(properties).IsError());

  vorna::host::ImageFrame frame = sink->GetFrame();
  sink->VisitFrame([&](const vorna::host::ImageFrame& shown) { EXPECT_EQ(shown.pixels, frame.pixels); });
  EXPECT_EQ(sink->GetFrameCount(), 1);
  EXPECT_EQ(frame.pixelFormat, "vorna.PixelFormats.RGBA:u8");
  EXPECT_EQ(frame.deliveredLines, 4);
  ASSERT_EQ(frame.pixels.size(), 2u * 4u * 4u);
  for (int y = 0; y < 4; ++y)
    for (int x = 0; x < 2; ++x) {
      const uint8_t* p = &frame.pixels[size_t(y * 8 + x * 4)];
      EXPECT_EQ(p[0], 9) << "red";
      EXPECT_EQ(p[1], 3 - y) << "green: line y came from source line 3 - y";
      EXPECT_EQ(p[2], 1 - x) << "blue: read backwards";
      EXPECT_EQ(p[3], 255);
    }
}

TEST(ImageSinkTest, LinesOutsideTheFrameAreRefused) {
  StrongRef<MediaStreamImageDataImportInterface> stream = tessel::testing::MakeObject<MediaStreamImageDataImportInterface>(g_imageImportClass);
  auto sink = vorna::host::AttachImageSink(stream, "vorna.PixelFormats.RGBA:u8");
  MediaStreamProperties properties = FrameProperties(2, 2);
  ASSERT_FALSE(stream.InitStream(properties).IsError());
  Result<SetPixelHandlerStruct> handler = stream.SetPixelStream(properties, ChannelOffsets{}, 0);
  UChar pixels[6] = {};
  EXPECT_TRUE(handler.GetValue().setLine(LineRange{0, 2, 2}, LineSource{pixels, 24}, 0).IsError());
  EXPECT_TRUE(handler.GetValue().setLine(LineRange{1, 0, 2}, LineSource{pixels, 24}, 0).IsError());
  EXPECT_FALSE(vorna::host::AttachImageSink(stream, "vorna.PixelFormats.NoSuch:u8"));
}

TEST(AudioSinkTest, CollectsEveryBlock) {
  StrongRef<MediaStreamAudioDataImportInterface> stream = tessel::testing::MakeObject<MediaStreamAudioDataImportInterface>(g_audioImportClass);
  auto sink = vorna::host::AttachAudioSink(stream);
  ASSERT_TRUE(sink);
  MediaStreamProperties properties = tessel::testing::MakeObject<MediaStreamPropertiesInterface>(g_propertiesClass);
  Result<AudioDataCallback> callback = stream.SetAudioDataCallback(properties);
  ASSERT_FALSE(callback.IsError());
  const UChar first[3] = {1, 2, 3};
  const UChar second[2] = {4, 5};
  ASSERT_FALSE(callback.GetValue()(AudioDataBlock{first, 3}).IsError());
  ASSERT_FALSE(callback.GetValue()(AudioDataBlock{second, 2}).IsError());
  EXPECT_EQ(sink->GetBlockCount(), 2);
  EXPECT_EQ(sink->GetBytes(), (std::vector<uint8_t>{1, 2, 3, 4, 5}));
}

}  // namespace
}  // namespace vorna
