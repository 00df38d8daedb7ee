#include "vorna/translationunit.h"

#include <gtest/gtest.h>

#include <cstring>

#include "host_environment.h"
#include "published_objects.h"
#include "vorna/audioobject.h"
#include "vorna/component.h"
#include "vorna/fileformat.h"
#include "vorna/mediasession_keys.h"
#include "vorna/mediasession_output.h"

namespace vorna {
namespace {

VORNA_DEFINE_OBJECT_USE(g_converterClass, "vorna.MediaConverterBaseClass");
VORNA_DEFINE_OBJECT_USE(g_outputClass, "vorna.MediaOutputUrlBaseClass");
VORNA_DEFINE_OBJECT_USE(g_streamClass, "vorna.MediaStreamBaseClass");
VORNA_DEFINE_OBJECT_USE(g_imageFormatClass, "vorna.FileFormatImageBaseClass");
VORNA_DEFINE_OBJECT_USE(g_audioClass, "vorna.AudioObjectClass");

TEST(MediaBaseClassesTest, ConverterKeepsItsOutputStreams) {
  MediaConverter converter = tessel::testing::MakeObject<MediaConverterInterface>(g_converterClass);
  MediaStream first = tessel::testing::MakeObject<MediaStreamInterface>(g_streamClass);
  MediaStream second = tessel::testing::MakeObject<MediaStreamInterface>(g_streamClass);
  ASSERT_TRUE(converter && first && second);
  ASSERT_FALSE(converter.AddOutputStream(first).IsError());
  ASSERT_FALSE(converter.AddOutputStream(second).IsError());
  Result<BaseArray<MediaStream>> outputs = converter.GetOutputStreams(0);
  ASSERT_EQ(outputs.GetValue().GetCount(), 2);
  EXPECT_EQ(outputs.GetValue()[1].GetPointer(), second.GetPointer());
  ASSERT_FALSE(converter.RemoveOutputStream(first).IsError());
  EXPECT_EQ(converter.GetOutputStreams(1).GetValue().GetCount(), 1);
  EXPECT_EQ(converter.GetInputConverter().count, 0);
  EXPECT_FALSE(converter.Execute({}, TimeValue(0.0), 0).IsError()) << "the base does nothing of its own";
  EXPECT_FALSE(Cast<MediaInputInterface>(converter)) << "the base is no input";
}

TEST(MediaBaseClassesTest, OutputAnswersItsCapabilitiesAndForwardsOtherKeys) {
  StrongRef<MediaOutputUrlInterface> output = tessel::testing::MakeObject<MediaOutputUrlInterface>(g_outputClass);
  ASSERT_TRUE(output);
  EXPECT_FALSE(output.Get<Bool>(g_mediaOutputUrlSupportsVideo).GetValue());
  EXPECT_EQ(output.Get<Int64>(g_mediaOutputUrlMaximalimageresolution).GetValue(), 0);
  ASSERT_FALSE(output.SetData(g_mediaFormatVideoFps, Float64(25.0)).IsError());
  EXPECT_EQ(output.Get<Float64>(g_mediaFormatVideoFps).GetValue(), 25.0) << "an unknown key reaches the dictionary";
  Url url;
  ASSERT_FALSE(url.Set("memory://movie.mp4").IsError());
  ASSERT_FALSE(output.SetOutputUrl(url).IsError());
  EXPECT_TRUE(output.GetOutputUrl() == url);
  EXPECT_EQ(output.CheckBitmapSize(BitmapSize{1919, 1081}).GetValue().width, 1919);
  EXPECT_TRUE(Cast<MediaConverterInterface>(output)) << "an output is a converter";
  DataDescription description;
  EXPECT_FALSE(output.AsDescriptionObject().GetObjectDescription(description, nullptr).IsError());
  EXPECT_EQ(description.GetCount(), 0) << "the base has no settings to describe";
}

TEST(MediaBaseClassesTest, FileFormatBaseClaimsNothing) {
  StrongRef<FileFormatInterface> format = tessel::testing::MakeObject<FileFormatInterface>(g_imageFormatClass);
  ASSERT_TRUE(format);
  Url url;
  ASSERT_FALSE(url.Set("memory://anything").IsError());
  Result<Bool> detected = format.Detect(url);
  ASSERT_FALSE(detected.IsError());
  EXPECT_FALSE(detected.GetValue());
}

TEST(MediaBaseClassesTest, AudioObjectHoldsZeroedInterleavedSound) {
  AudioObject audio = tessel::testing::MakeObject<AudioObjectInterface>(g_audioClass);
  ASSERT_TRUE(audio);
  ASSERT_FALSE(audio.Init(2, 16, 48000.0, 4800).IsError());
  EXPECT_EQ(audio.GetDataPtr().count, 4800 * 4);
  EXPECT_EQ(audio.GetDataPtr()[100], 0);
  EXPECT_DOUBLE_EQ(audio.GetLength().GetSeconds(), 0.1);
  EXPECT_TRUE(IsErrorOfClass(audio.Init(2, 12, 48000.0, 10).GetError(), g_IllegalArgumentErrorObject));
}

}  // namespace
}  // namespace vorna
