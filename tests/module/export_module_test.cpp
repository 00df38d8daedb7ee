// The Media Foundation savers as the host meets them: entered in vorna.ImageSavers when
// the module loads and taken out when it unloads, with their capabilities, frame sizes,
// setting descriptions and file formats.
#include "vorna/translationunit.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fixtures.h"
#include "host_environment.h"
#include "loaded_module.h"
#include "vorna/classinterface.h"
#include "vorna/component.h"
#include "vorna/datadescription.h"
#include "vorna/datatypelib.h"
#include "vorna/extensionpoint.h"
#include "vorna/fileformat.h"
#include "vorna/mediasession_keys.h"
#include "vorna/mediasession_output.h"
#include "vorna/referencedata.h"
#include "vorna/resourceid.h"
#include "vorna/saversettings.h"

namespace vorna {
namespace {

using tessel::testing::WithLoadedModule;

VORNA_DEFINE_RESOURCE_ID(g_audioCodecKey, "audio.codec");

const char* const MF_SAVERS[] = {"mp4", "asf", "wmv", "3gp"};

std::vector<std::string> SaverIds() {
  std::vector<std::string> ids;
  ExtensionPointHandle* savers = ExtensionPoint::Find(Id("vorna.ImageSavers"));
  for (Int i = 0; i < ExtensionPoint::GetCount(savers); ++i) {
    const Id* key = nullptr;
    if (ExtensionPoint::GetEntry(savers, i, &key) && key) ids.push_back(key->GetCString());
  }
  return ids;
}

ObjectRef NewSaver(const char* id) {
  const Data* entry = ExtensionPoint::FindEntry(ExtensionPoint::Find(Id("vorna.ImageSavers")), Id(id));
  Result<ObjectRef> saver = CreateObjectOfClass(GetClassFromData(entry), VORNA_SOURCE_LOCATION);
  EXPECT_FALSE(saver.IsError()) << id;
  return saver.IsError() ? ObjectRef() : saver.GetValue();
}

// The description's entries by identifier, each as its dictionary.
std::vector<DataDictionary> Describe(const ObjectRef& saver, const DataDictionary* settings) {
  DataDescription description;
  EXPECT_FALSE(DataDescriptionObjectInterface(saver.GetPointer()).GetObjectDescription(description, settings).IsError());
  std::vector<DataDictionary> entries;
  for (Int i = 0; i < description.GetCount(); ++i) entries.push_back(*description.GetEntry(i));
  return entries;
}

std::string Identifier(const DataDictionary& entry) {
  Result<InternedId> key = entry.Get<InternedId>(g_dataDescriptionIdentifier);
  return key.IsError() ? std::string() : (*key.GetValue()).GetCString();
}

template <typename T>
std::vector<T> Choices(const DataDictionary& entry) {
  Result<Data> choices = entry.Get(g_dataDescriptionEnum);
  if (choices.IsError()) return {};
  Block<const T> block = GetBlockFromData<T>(choices.GetValue());
  return {block.begin(), block.end()};
}

const DataDictionary* Entry(const std::vector<DataDictionary>& entries, const std::string& id) {
  for (const DataDictionary& entry : entries)
    if (Identifier(entry) == id) return &entry;
  return nullptr;
}

using ExportModuleTest = WithLoadedModule<>;

TEST_F(ExportModuleTest, SaversAreEnteredInOrderAndTakenOutAtUnload) {
  std::vector<std::string> ids = SaverIds();
  std::vector<std::string> movieSavers;
  for (const std::string& id : ids)
    if (id != "avi") movieSavers.push_back(id);
  EXPECT_EQ(movieSavers, (std::vector<std::string>{"mp4", "asf", "wmv", "3gp"}));
  host::UnloadModule(_module);
  _module = nullptr;
  EXPECT_TRUE(SaverIds().empty());
  Result<host::LoadedModule*> again = host::LoadModule("net.vorna.tessel_reel");
  ASSERT_FALSE(again.IsError());
  _module = again.GetValue();
  EXPECT_EQ(SaverIds().size(), ids.size()) << "a second load enters them again";
}

TEST_F(ExportModuleTest, CapabilitiesAreTheSameForAllFour) {
  for (const char* id : MF_SAVERS) {
    ObjectRef saver = NewSaver(id);
    DataDictionaryObjectInterface capabilities(saver.GetPointer());
    EXPECT_TRUE(capabilities.Get<Bool>(g_mediaOutputUrlSupportsVideo, false)) << id;
    EXPECT_TRUE(capabilities.Get<Bool>(g_mediaOutputUrlSupportsAudio, false)) << id;
    EXPECT_FALSE(capabilities.Get<Bool>(g_mediaOutputUrlSupportsSystemoptions, true)) << "the base answers " << id;
    EXPECT_EQ(capabilities.Get<Int64>(g_mediaOutputUrlMaximalimageresolution, 0), 32000) << id;
    EXPECT_EQ(capabilities.Get<Int64>(g_mediaOutputUrlMaximalalphachannels, -1), 0) << id;
    Result<Data> depths = capabilities.GetData(g_mediaOutputUrlBitdepthsimage);
    ASSERT_FALSE(depths.IsError()) << id;
    Block<const DataType> depth = GetBlockFromData<DataType>(depths.GetValue());
    ASSERT_EQ(depth.count, 1) << id;
    EXPECT_EQ(depth[0].id, DataTypeOf<UChar>()->id) << id;
    Result<Data> layers = capabilities.GetData(g_mediaOutputUrlBitdepthslayer);
    ASSERT_FALSE(layers.IsError()) << "an empty block, not an absent value";
    EXPECT_EQ(GetBlockFromData<DataType>(layers.GetValue()).count, 0);
  }
}

TEST_F(ExportModuleTest, BitmapSizesAlignToTheContainer) {
  for (const char* id : MF_SAVERS) {
    ObjectRef object = NewSaver(id);
    MediaOutputUrlInterface saver(object.GetPointer());
    Result<BitmapSize> odd = saver.CheckBitmapSize({1921, 1081});
    ASSERT_FALSE(odd.IsError());
    EXPECT_EQ(odd.GetValue().width, std::string(id) == "mp4" ? 1936 : 1922) << id;
    EXPECT_EQ(odd.GetValue().height, 1082) << id;
    Result<BitmapSize> even = saver.CheckBitmapSize({1920, 1080});
    EXPECT_EQ(even.GetValue().width, 1920) << id;
    EXPECT_EQ(even.GetValue().height, 1080) << id;
    Result<BitmapSize> huge = saver.CheckBitmapSize({32001, 40001});
    EXPECT_FALSE(huge.IsError()) << "the size limit is the frame's business, not this one's";
  }
}

TEST_F(ExportModuleTest, SettingsAreDescribedInOrderWithTheSaversCodecs) {
  std::vector<DataDictionary> wmv = Describe(NewSaver("wmv"), nullptr);
  std::vector<std::string> order;
  for (const DataDictionary& entry : wmv) order.push_back(Identifier(entry));
  EXPECT_EQ(order, (std::vector<std::string>{"codec", "datarate", "keyframes", "disable srgb conversion", "audio.codec",
                                             "audio.samplerate", "audio.kilobitrate"}));
  const DataDictionary* codec = Entry(wmv, "codec");
  ASSERT_TRUE(codec);
  EXPECT_EQ(codec->Get<Id>(g_dataDescriptionDefaultvalue, Id()), Id("WMV3"));
  EXPECT_EQ(Choices<Id>(*codec), (std::vector<Id>{"H.264", "WMV1", "WMV2", "WMV3"}));
  EXPECT_EQ(Entry(wmv, "datarate")->Get<Int64>(g_dataDescriptionMinvalue, -1), 0);
  EXPECT_EQ(Choices<Int64>(*Entry(wmv, "audio.kilobitrate")).size(), 8u);
  EXPECT_TRUE(Choices<Int64>(*Entry(wmv, "audio.samplerate")).empty()) << "without settings the rates have no list";

  std::vector<DataDictionary> mp4 = Describe(NewSaver("mp4"), nullptr);
  EXPECT_EQ(Entry(mp4, "codec")->Get<Id>(g_dataDescriptionDefaultvalue, Id()), Id("H.264"));
  EXPECT_EQ(Choices<Id>(*Entry(mp4, "codec")), std::vector<Id>{"H.264"});
}

TEST_F(ExportModuleTest, SampleRateChoicesFollowTheAudioCodec) {
  ObjectRef saver = NewSaver("asf");
  DataDictionary none;
  DataDictionary mp3;
  ASSERT_FALSE(mp3.Set(g_audioCodecKey, Id("mp3")).IsError());
  DataDictionary opus;
  ASSERT_FALSE(opus.Set(g_audioCodecKey, Id("opus")).IsError());
  EXPECT_EQ(Choices<Int64>(*Entry(Describe(saver, &none), "audio.samplerate")),
            (std::vector<Int64>{44100, 48000, 96000}))
      << "an absent codec reads as aac";
  EXPECT_EQ(Choices<Int64>(*Entry(Describe(saver, &mp3), "audio.samplerate")),
            (std::vector<Int64>{32000, 44100, 48000}));
  EXPECT_TRUE(Choices<Int64>(*Entry(Describe(saver, &opus), "audio.samplerate")).empty());
}

TEST_F(ExportModuleTest, FileFormatsNameTheirSuffixAndClaimNothing) {
  for (const char* id : MF_SAVERS) {
    ObjectRef object = NewSaver(id);
    MediaOutputUrlInterface saver(object.GetPointer());
    ObjectRef format = saver.GetFileFormat();
    FileFormatInterface fileFormat = Cast<FileFormatInterface>(format);
    ASSERT_TRUE(fileFormat) << id;
    const Data* published = ExtensionPoint::FindEntry(ExtensionPoint::Find(Id("vorna.FileFormats")),
                                                      Id((std::string("movie.") + id).c_str()));
    EXPECT_EQ(GetObjectFromData<FileFormatInterface>(published).GetPointer(), fileFormat.GetPointer()) << id;
    Result<Data> suffixes = fileFormat.GetData(g_fileFormatCommonsuffixes);
    ASSERT_FALSE(suffixes.IsError());
    Block<const String> block = GetBlockFromData<String>(suffixes.GetValue());
    ASSERT_EQ(block.count, 1);
    EXPECT_EQ(std::string(block[0].GetCString().GetValue().GetCString()), id);
    Url url;
    ASSERT_FALSE(url.Set(tessel::fixtures::Path("movie_aac.mp4").c_str()).IsError());
    Result<Bool> detected = fileFormat.Detect(url);
    EXPECT_FALSE(detected.IsError());
    EXPECT_FALSE(detected.GetValue()) << "reading is movie.winmf's business";
  }
}

TEST_F(ExportModuleTest, CopyingASaverIsRefused) {
  Result<void*> copy = Class::CloneObject(NewSaver("wmv").GetPointer(), VORNA_SOURCE_LOCATION);
  ASSERT_TRUE(copy.IsError());
  EXPECT_TRUE(IsErrorOfClass(copy.GetError(), g_FunctionNotImplementedErrorObject));
}

}  // namespace
}  // namespace vorna
