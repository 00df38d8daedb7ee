#include "vorna/translationunit.h"

#include <gtest/gtest.h>

#include "host_environment.h"
#include "published_objects.h"
#include "vorna/component.h"
#include "vorna/datatypes.h"
#include "vorna/mediasession_keys.h"
#include "vorna/mediasession_stream.h"

namespace vorna {
namespace {

VORNA_DEFINE_OBJECT_USE(g_streamClass, "vorna.MediaStreamBaseClass");
VORNA_DEFINE_OBJECT_USE(g_propertiesClass, "vorna.MediaStreamPropertiesClass");

TEST(MediaStreamClassTest, FormatsSelectionAndSubscription) {
  MediaStream stream = tessel::testing::MakeObject<MediaStreamInterface>(g_streamClass);
  MediaStreamProperties native = tessel::testing::MakeObject<MediaStreamPropertiesInterface>(g_propertiesClass);
  MediaStreamProperties square = tessel::testing::MakeObject<MediaStreamPropertiesInterface>(g_propertiesClass);
  ASSERT_TRUE(stream && native && square);
  ASSERT_FALSE(native.SetData(g_mediaFormatImageWidth, Int64(720)).IsError());
  ASSERT_FALSE(stream.AddFormat(MakeData(Int64(1)), native).IsError());
  ASSERT_FALSE(stream.AddFormat(MakeData(Int64(-1)), square).IsError());

  EXPECT_TRUE(GetDataValue<Int64>(stream.GetSelectedFormat()).IsError()) << "nothing selected is no format 0";
  EXPECT_FALSE(stream.IsSubscribed());
  ASSERT_FALSE(stream.SubscribeStream(MakeData(Int64(-1))).IsError());
  EXPECT_TRUE(stream.IsSubscribed());
  EXPECT_EQ(GetDataValue<Int64>(stream.GetSelectedFormat()).GetValue(), -1);
  EXPECT_TRUE(IsErrorOfClass(stream.SetSelectedFormat(MakeData(Int64(7))).GetError(), g_IllegalArgumentErrorObject));

  EXPECT_EQ(stream.GetFormat(MakeData(Int64(1))).GetPointer(), native.GetPointer());
  EXPECT_EQ(stream.GetFormat(MakeData(Int64(1))).Get<Int64>(g_mediaFormatImageWidth).GetValue(), 720);
  EXPECT_FALSE(stream.GetFormat(MakeData(Int32(1)))) << "an id of another type is another id";
  EXPECT_EQ(stream.GetFormats().GetValue().GetCount(), 2);
  ASSERT_FALSE(stream.UnsubscribeStream().IsError());
  EXPECT_FALSE(stream.IsSubscribed());
}

TEST(MediaStreamClassTest, PropertiesStartFromAFormatOfTheirStream) {
  MediaStream stream = tessel::testing::MakeObject<MediaStreamInterface>(g_streamClass);
  MediaStreamProperties format = tessel::testing::MakeObject<MediaStreamPropertiesInterface>(g_propertiesClass);
  ASSERT_FALSE(format.SetData(g_mediaFormatImageWidth, Int64(720)).IsError());
  ASSERT_FALSE(stream.AddFormat(MakeData(Int64(1)), format).IsError());
  MediaStreamProperties frame = tessel::testing::MakeObject<MediaStreamPropertiesInterface>(g_propertiesClass);
  ASSERT_FALSE(frame.Init(stream, MakeData(Int64(1))).IsError());
  EXPECT_EQ(frame.Get<Int64>(g_mediaFormatImageWidth).GetValue(), 720);
  ASSERT_FALSE(frame.SetData(g_mediaFormatImageWidth, Int64(360)).IsError());
  EXPECT_EQ(format.Get<Int64>(g_mediaFormatImageWidth).GetValue(), 720) << "the format keeps its own keys";
  EXPECT_TRUE(IsErrorOfClass(frame.Init(stream, MakeData(Int64(2))).GetError(), g_IllegalArgumentErrorObject));
}

TEST(MediaStreamClassTest, PropertiesBindToTheirStreamWithoutKeepingIt) {
  Int before = vorna::host::GetLiveAllocationCount();
  {
    MediaStream stream = tessel::testing::MakeObject<MediaStreamInterface>(g_streamClass);
    MediaStreamProperties frame = tessel::testing::MakeObject<MediaStreamPropertiesInterface>(g_propertiesClass);
    ASSERT_FALSE(frame.Init(stream).IsError());
    ASSERT_FALSE(stream.AddFormat(MakeData(Int64(1)), frame).IsError());
  }
  EXPECT_EQ(vorna::host::GetLiveAllocationCount(), before) << "a stream and its formats leave nothing behind";
}

}  // namespace
}  // namespace vorna
