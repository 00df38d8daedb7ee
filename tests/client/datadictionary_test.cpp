#include "vorna/translationunit.h"

#include <gtest/gtest.h>

#include "host_environment.h"
#include "vorna/component.h"
#include "vorna/datadictionaryobject.h"
#include "vorna/resourceid.h"

namespace vorna {
namespace {

VORNA_DEFINE_RESOURCE_ID(g_widthKey, "vorna.mediaformat.image.width");
VORNA_DEFINE_RESOURCE_ID(g_widthKeyAgain, "vorna.mediaformat.image.width");
VORNA_DEFINE_RESOURCE_ID(g_heightKey, "vorna.mediaformat.image.height");

TEST(ResourceIdTest, OneIdentityPerName) {
  ASSERT_TRUE(g_widthKey.IsSet());
  EXPECT_EQ(g_widthKey.Get(), g_widthKeyAgain.Get());
  EXPECT_NE(g_widthKey.Get(), g_heightKey.Get());
  EXPECT_STREQ((*g_widthKey).GetCString(), "vorna.mediaformat.image.width");
}

TEST(DataTest, TypedGetWidensAndRefusesTheRest) {
  EXPECT_EQ(GetDataValue<Int64>(MakeData(Int32(-7))).GetValue(), -7);
  EXPECT_EQ(GetDataValue<Int64>(MakeData(UInt32(0xFFFFFFFFu))).GetValue(), 0xFFFFFFFFll);
  EXPECT_EQ(GetDataValue<Float64>(MakeData(Float32(0.5f))).GetValue(), 0.5);
  Result<Int32> narrowed = GetDataValue<Int32>(MakeData(Int64(1)));
  EXPECT_TRUE(IsErrorOfClass(narrowed.GetError(), g_IllegalStateErrorObject));
  EXPECT_TRUE(GetDataValue<UInt64>(MakeData(Int32(1))).IsError()) << "a signed value never reads as unsigned";
  EXPECT_TRUE(GetDataValue<Int64>(Data()).IsError());
}

TEST(DataTest, LargeValuesLieInABlockAndCopyDeeply) {
  Id id;
  ASSERT_TRUE(id.Init("a rather long owned id"));
  Data a = MakeData(id);
  Data b = a;
  EXPECT_NE(a.GetAddress(), b.GetAddress());
  EXPECT_TRUE(*static_cast<const Id*>(b.GetAddress()) == id);
}

TEST(DataDictionaryTest, CopiesShareUntilOneWrites) {
  DataDictionary original;
  ASSERT_FALSE(original.Set(g_widthKey, Int64(720)).IsError());
  DataDictionary copy = original;
  EXPECT_EQ(copy.GetBlock(), original.GetBlock());
  ASSERT_FALSE(copy.Set(g_widthKey, Int64(1920)).IsError());
  EXPECT_NE(copy.GetBlock(), original.GetBlock());
  EXPECT_EQ(original.Get<Int64>(g_widthKey).GetValue(), 720);
  EXPECT_EQ(copy.Get<Int64>(g_widthKey).GetValue(), 1920);
}

TEST(DataDictionaryTest, TypedGetsAndTheirErrors) {
  DataDictionary dictionary;
  EXPECT_TRUE(IsErrorOfClass(dictionary.Get<Int64>(g_widthKey).GetError(), g_NullptrErrorObject))
      << "no dictionary yet";
  ASSERT_FALSE(dictionary.Set(g_widthKey, Int32(576)).IsError());
  EXPECT_EQ(dictionary.Get<Int64>(g_widthKey).GetValue(), 576) << "Int32 widens";
  EXPECT_TRUE(IsErrorOfClass(dictionary.Get<Int64>(g_heightKey).GetError(), g_IllegalStateErrorObject));
  EXPECT_TRUE(IsErrorOfClass(dictionary.Get<Bool>(g_widthKey).GetError(), g_IllegalStateErrorObject));
  EXPECT_EQ(dictionary.Get<Int64>(g_heightKey, Int64(-1)), -1);
  EXPECT_EQ(dictionary.Get<Float64>(g_widthKey, 2.5), 2.5);
  EXPECT_TRUE(dictionary.Erase(g_widthKey));
  EXPECT_EQ(dictionary.GetCount(), 0);
}

TEST(DataDictionaryTest, FailedGrowthIsOutOfMemoryAndKeepsTheEntries) {
  DataDictionary dictionary;
  ASSERT_FALSE(dictionary.Set(g_widthKey, Int64(1)).IsError());
  vorna::host::FailAllocationsAfter(0);
  Result<void> set = dictionary.Set(g_heightKey, Int64(2));
  vorna::host::FailAllocationsAfter(-1);
  EXPECT_TRUE(IsErrorOfClass(set.GetError(), g_OutOfMemoryErrorObject));
  EXPECT_EQ(dictionary.Get<Int64>(g_widthKey).GetValue(), 1);
}

TEST(DataDictionaryObjectTest, HostClassKeepsProperties) {
  Result<ObjectRef> made = CreateObjectOfClass(GetPublishedClass(g_DataDictionaryObjectClass), VORNA_SOURCE_LOCATION);
  ASSERT_FALSE(made.IsError());
  DataDictionaryObjectInterface properties = Cast<DataDictionaryObjectInterface>(made.GetValue());
  ASSERT_TRUE(properties);
  EXPECT_TRUE(properties.IsEmpty());
  ASSERT_FALSE(properties.SetData(g_heightKey, Float64(1.5)).IsError());
  EXPECT_EQ(properties.Get<Float64>(g_heightKey).GetValue(), 1.5);
  EXPECT_TRUE(properties.GetData(g_widthKey).IsError());
  EXPECT_FALSE(properties.IsEmpty());
}

}  // namespace
}  // namespace vorna
