// What the loaded module declares of the host, read from its records and compared with
// the catalogue in host_catalogue.txt: every interface, object, component class and
// resource id once, interfaces with their bases, reference class and method count; the
// slots of the interfaces the module implements or calls; calls through what the host
// leaves unresolved; start-up balanced over two loads.
#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "host_environment.h"
#include "loaded_module.h"
#include "tessel_platform_control.h"
#include "vorna/audioobject.h"
#include "vorna/errorbase.h"
#include "vorna/extensionpoint.h"
#include "vorna/fileformat.h"
#include "vorna/gfx_image_exif.h"
#include "vorna/gfx_image_pixelformats.h"
#include "vorna/ioconnection.h"
#include "vorna/iostreams.h"
#include "vorna/mediasession_output.h"
#include "vorna/referencedata.h"
#include "vorna/stringencoding.h"

namespace vorna {
namespace {

using tessel::testing::Console;
using tessel::testing::WithLoadedModule;

struct CatalogueInterface {
  std::vector<std::string> bases;  // full ids
  UInt32 referenceClass = 0;
  std::vector<std::string> methods;
};

struct Catalogue {
  std::map<std::string, CatalogueInterface> interfaces;
  std::map<std::string, Int> statics;
  std::vector<std::string> objects;     // plain ids and joined members
  std::vector<std::string> components;
  std::vector<std::string> resources;
};

std::vector<std::string> Words(const std::string& text) {
  std::istringstream in(text);
  std::vector<std::string> words;
  for (std::string word; in >> word;) words.push_back(word);
  return words;
}

std::string FullInterfaceId(const std::string& base) { return "vorna." + base + "#1"; }

void ReadInterface(const std::string& rest, Catalogue& catalogue) {
  std::vector<std::string> cells;
  std::istringstream in(rest);
  for (std::string cell; std::getline(in, cell, '|');) cells.push_back(cell);
  cells.resize(4);
  CatalogueInterface entry;
  for (const std::string& base : Words(cells[1])) entry.bases.push_back(FullInterfaceId(base));
  entry.referenceClass = UInt32(std::stoul(cells[2]));
  entry.methods = Words(cells[3]);
  catalogue.interfaces[Words(cells[0]).at(0)] = entry;
}

const Catalogue& TheCatalogue() {
  static const Catalogue catalogue = [] {
    Catalogue read;
    std::ifstream file(TESSEL_HOST_CATALOGUE);
    EXPECT_TRUE(file.good()) << TESSEL_HOST_CATALOGUE;
    for (std::string line; std::getline(file, line);) {
      if (line.empty() || line[0] == '#') continue;
      std::string kind = line.substr(0, line.find(' '));
      std::string rest = line.substr(kind.size() + 1);
      if (kind == "interface") ReadInterface(rest, read);
      if (kind == "static") read.statics[Words(rest).at(0)] = std::stol(Words(rest).at(1));
      if (kind == "object" || kind == "member") read.objects.push_back(rest);
      if (kind == "component") read.components.push_back(rest);
      if (kind == "resource") read.resources.push_back(rest);
    }
    return read;
  }();
  return catalogue;
}

// Everything the module's records hold, by id.
struct ModuleRecords {
  std::map<std::string, std::vector<InterfaceRecord*>> interfaces;
  std::map<std::string, std::vector<StaticInterfaceRecord*>> statics;
  std::map<std::string, std::vector<EntityRecord*>> objects;  // uses and definitions
  std::map<std::string, Int> classUses;
  std::map<std::string, Int> resources;
};

void ReadUnit(TranslationUnitRecord* unit, ModuleRecords& records) {
  for (EntityRecord* definition = unit->first; definition; definition = definition->next)
    if (EntityKind(definition->kind) == EntityKind::OBJECT) records.objects[definition->id.GetCString()].push_back(definition);
  for (EntityUse* use = unit->uses; use; use = use->next)
    if (use->kind == EntityUse::CLASS) ++records.classUses[use->id];
}

ModuleRecords ReadRecords(ModuleRecord* head) {
  ModuleRecords records;
  for (ModuleRecord* module = head; module; module = module->nextModule) {
    for (EntityRecord* import = module->imports; import; import = import->next) {
      std::string id = import->id.GetCString();
      switch (EntityKind(import->kind)) {
        case EntityKind::INTERFACE: records.interfaces[id].push_back(static_cast<InterfaceRecord*>(import)); break;
        case EntityKind::STATIC_INTERFACE: records.statics[id].push_back(static_cast<StaticInterfaceRecord*>(import)); break;
        default: records.objects[id].push_back(import); break;
      }
    }
    for (TranslationUnitRecord* unit = module->units; unit; unit = static_cast<TranslationUnitRecord*>(unit->next))
      ReadUnit(unit, records);
    for (ResourceIdUse* use = module->resourceIds; use; use = use->next) ++records.resources[use->name];
  }
  return records;
}

std::vector<std::string> BaseIds(const InterfaceRecord& record) {
  std::vector<std::string> ids;
  if (record.flags & entityflags::SINGLE_BASE) {
    ids.push_back(record.SingleBase()->id.GetCString());
  } else {
    for (const InterfaceRecord* const* base = record.BaseArray(); *base; ++base) ids.push_back((*base)->id.GetCString());
  }
  return ids;
}

class HostCatalogueTest : public WithLoadedModule<> {
 protected:
  void SetUp() override {
    WithLoadedModule::SetUp();
    _records = ReadRecords(host::GetModuleRecords(_module));
  }

  ModuleRecords _records;
};

TEST_F(HostCatalogueTest, EveryVirtualInterfaceOnceWithItsBasesReferenceClassAndMethods) {
  ASSERT_EQ(TheCatalogue().interfaces.size(), 100u);
  for (const auto& [id, expected] : TheCatalogue().interfaces) {
    const auto& found = _records.interfaces[id];
    ASSERT_EQ(found.size(), 1u) << id;
    const InterfaceRecord& record = *found[0];
    EXPECT_EQ(record.size, StretchSize(Int(expected.methods.size()))) << id;
    EXPECT_EQ((record.flags >> entityflags::REFCLASS_SHIFT) & 0xF, expected.referenceClass) << id;
    EXPECT_EQ(BaseIds(record), expected.bases) << id;
    EXPECT_EQ((record.flags & entityflags::SINGLE_BASE) != 0, expected.bases.size() == 1) << id;
  }
}

TEST_F(HostCatalogueTest, EveryStaticInterfaceOnceWithItsMethodCount) {
  ASSERT_EQ(TheCatalogue().statics.size(), 66u);
  for (const auto& [id, count] : TheCatalogue().statics) {
    const auto& found = _records.statics[id];
    ASSERT_EQ(found.size(), 1u) << id;
    EXPECT_EQ(found[0]->count, count) << id;
  }
}

TEST_F(HostCatalogueTest, EveryObjectComponentClassAndResourceIdOnce) {
  for (const std::string& id : TheCatalogue().objects) EXPECT_EQ(_records.objects[id].size(), 1u) << id;
  for (const std::string& id : TheCatalogue().components) EXPECT_EQ(_records.classUses[id], 1) << id;
  ASSERT_EQ(TheCatalogue().resources.size(), 193u);
  for (const std::string& name : TheCatalogue().resources) EXPECT_EQ(_records.resources[name], 1) << name;
}

// Slots of the interfaces the module implements or calls, as the headers number them.
struct Slot {
  Int slot;
  const char* name;
};
#define SLOT(IFACE, METHOD) \
  Slot { IFACE::k##METHOD, #METHOD }

struct InterfaceSlots {
  const Char* id;
  Int count;
  std::vector<Slot> slots;
};

#define SLOTS(IFACE, ...) \
  InterfaceSlots { IFACE::ID, IFACE::COUNT, {__VA_ARGS__} }

const std::vector<InterfaceSlots>& UsedInterfaceSlots() {
  static const std::vector<InterfaceSlots> slots = {
      SLOTS(ObjectInterface, SLOT(ObjectInterface, ToString), SLOT(ObjectInterface, IsEqual),
            SLOT(ObjectInterface, Compare), SLOT(ObjectInterface, GetHashCode)),
      SLOTS(DataDictionaryObjectInterface, SLOT(DataDictionaryObjectInterface, SetData),
            SLOT(DataDictionaryObjectInterface, GetData), SLOT(DataDictionaryObjectInterface, InitIterator)),
      SLOTS(DataDescriptionObjectInterface, SLOT(DataDescriptionObjectInterface, GetObjectDescription)),
      SLOTS(ErrorInterface, SLOT(ErrorInterface, SetLocation), SLOT(ErrorInterface, SetMessage),
            SLOT(ErrorInterface, GetCause), SLOT(ErrorInterface, PrivateSetCode)),
      SLOTS(BaseStreamInterface, SLOT(BaseStreamInterface, GetStreamLength), SLOT(BaseStreamInterface, GetPosition),
            SLOT(BaseStreamInterface, Close), SLOT(BaseStreamInterface, SeekSupported), SLOT(BaseStreamInterface, Seek)),
      SLOTS(InputStreamInterface, SLOT(InputStreamInterface, ReadEOS), SLOT(InputStreamInterface, Skip)),
      SLOTS(OutputStreamInterface, SLOT(OutputStreamInterface, Write), SLOT(OutputStreamInterface, Flush)),
      SLOTS(IoConnectionInterface, SLOT(IoConnectionInterface, OpenInputStream), SLOT(IoConnectionInterface, IoDetect),
            SLOT(IoConnectionInterface, IoDelete)),
      SLOTS(IoHandlerInterface, SLOT(IoHandlerInterface, OpenConnection)),
      SLOTS(AudioObjectInterface, SLOT(AudioObjectInterface, GetChannelCount),
            SLOT(AudioObjectInterface, GetBitsPerChannel), SLOT(AudioObjectInterface, GetSampleRate),
            SLOT(AudioObjectInterface, GetSampleCount), SLOT(AudioObjectInterface, GetLength),
            SLOT(AudioObjectInterface, GetDataPtr)),
      SLOTS(PixelFormatInterface, SLOT(PixelFormatInterface, CreatePix), SLOT(PixelFormatInterface, GetChannelOffsets),
            SLOT(PixelFormatInterface, GetBitsPerPixel), SLOT(PixelFormatInterface, GetBytesPerLine),
            SLOT(PixelFormatInterface, GetConvertPixelFunc), SLOT(PixelFormatInterface, GetDefaultColorProfile)),
      SLOTS(FileFormatInterface, SLOT(FileFormatInterface, Detect)),
      SLOTS(FileFormatHandlerInterface, SLOT(FileFormatHandlerInterface, GetFileFormat),
            SLOT(FileFormatHandlerInterface, GetHandlerType), SLOT(FileFormatHandlerInterface, CreateHandler),
            SLOT(FileFormatHandlerInterface, GetDependends)),
      SLOTS(MediaBaseInterface, SLOT(MediaBaseInterface, ConnectToSession), SLOT(MediaBaseInterface, GetSession)),
      SLOTS(MediaConverterInterface, SLOT(MediaConverterInterface, GetInputConverter),
            SLOT(MediaConverterInterface, AddOutputStream), SLOT(MediaConverterInterface, GetOutputStreams),
            SLOT(MediaConverterInterface, Analyze), SLOT(MediaConverterInterface, PrepareExecute),
            SLOT(MediaConverterInterface, Execute), SLOT(MediaConverterInterface, Close)),
      SLOTS(MediaOutputUrlInterface, SLOT(MediaOutputUrlInterface, GetOutputUrl),
            SLOT(MediaOutputUrlInterface, SetOutputUrl), SLOT(MediaOutputUrlInterface, GetFileFormat),
            SLOT(MediaOutputUrlInterface, EditSystemOptions), SLOT(MediaOutputUrlInterface, CheckBitmapSize)),
      SLOTS(MediaStreamInterface, SLOT(MediaStreamInterface, GetFormat), SLOT(MediaStreamInterface, GetSelectedFormat),
            SLOT(MediaStreamInterface, AddFormat), SLOT(MediaStreamInterface, SubscribeStream),
            SLOT(MediaStreamInterface, IsSubscribed)),
      SLOTS(MediaStreamImageDataImportInterface, SLOT(MediaStreamImageDataImportInterface, InitStream),
            SLOT(MediaStreamImageDataImportInterface, SetPixelStream),
            SLOT(MediaStreamImageDataImportInterface, FinishStream)),
      SLOTS(MediaStreamImageDataExportInterface, SLOT(MediaStreamImageDataExportInterface, InitStream),
            SLOT(MediaStreamImageDataExportInterface, GetPixelStream),
            SLOT(MediaStreamImageDataExportInterface, FinishStream)),
      SLOTS(MediaStreamAudioDataImportInterface, SLOT(MediaStreamAudioDataImportInterface, InitStream),
            SLOT(MediaStreamAudioDataImportInterface, SetAudioDataCallback),
            SLOT(MediaStreamAudioDataImportInterface, FinishStream)),
      SLOTS(MediaStreamAudioDataExportInterface, SLOT(MediaStreamAudioDataExportInterface, GetAudioObject)),
      SLOTS(MediaStreamPropertiesInterface, Slot{MediaStreamPropertiesInterface::kInit, "Init"}),
      SLOTS(StreamConversionInterface, SLOT(StreamConversionInterface, ConvertImpl)),
  };
  return slots;
}

TEST(HostCatalogueSlotsTest, InterfacesTheModuleImplementsOrCallsNumberTheirMethodsAsTheCatalogue) {
  for (const InterfaceSlots& used : UsedInterfaceSlots()) {
    auto entry = TheCatalogue().interfaces.find(used.id);
    ASSERT_NE(entry, TheCatalogue().interfaces.end()) << used.id;
    const std::vector<std::string>& methods = entry->second.methods;
    EXPECT_EQ(used.count, Int(methods.size())) << used.id;
    for (const Slot& slot : used.slots) {
      ASSERT_LT(slot.slot, Int(methods.size())) << used.id << " " << slot.name;
      EXPECT_EQ(methods[size_t(slot.slot)], slot.name) << used.id;
    }
  }
}

// Where a method's pair lies in every method table: the interface's stretch and the slot.
Int MethodPlace(const InterfaceRecord& record, Int slot) { return record.offset + STRETCH_HEAD + 16 * slot; }

TEST_F(HostCatalogueTest, InterfacesSharingAMethodNameKeepTheirOwnSlots) {
  std::map<std::string, std::vector<std::pair<std::string, Int>>> byName;
  for (const auto& [id, entry] : TheCatalogue().interfaces)
    for (size_t slot = 0; slot < entry.methods.size(); ++slot) byName[entry.methods[slot]].push_back({id, Int(slot)});
  Int shared = 0;
  for (const auto& [name, owners] : byName) {
    std::set<Int> places;
    Int resolved = 0;
    for (const auto& [id, slot] : owners) {
      const InterfaceRecord& record = *_records.interfaces[id].at(0);
      if (!record.IsResolved()) continue;
      ++resolved;
      places.insert(MethodPlace(record, slot));
    }
    EXPECT_EQ(Int(places.size()), resolved) << name;
    if (resolved > 1) ++shared;
  }
  EXPECT_GT(shared, 10) << "Init, Close, FinishStream, InitStream and others are shared";
}

InterfaceRecord& ModuleInterface(ModuleRecords& records, const char* id) { return *records.interfaces[id].at(0); }

// An exif reference that can call its one method, as a caller of that interface would.
class ExifCaller : public ExifInterface {
 public:
  using ExifInterface::ExifInterface;
  Result<Int> GetExifDictionary() const { return Invoke<&ExifCaller::GetExifDictionary, kGetExifDictionary>(); }
};

TEST_F(HostCatalogueTest, AnUnresolvedVirtualInterfaceIsNeverPassedAndItsCallGivesTheNullError) {
  InterfaceRecord& exif = ModuleInterface(_records, ExifInterface::ID);
  EXPECT_FALSE(exif.IsResolved());
  EXPECT_EQ(exif.offset, 0);
  StrongRef<FileFormatInterface> format = GetObjectFromData<FileFormatInterface>(
      ExtensionPoint::FindEntry(ExtensionPoint::Find(Id("vorna.FileFormats")), Id("movie.winmf")));
  ASSERT_TRUE(format);
  EXPECT_FALSE(HasInterface(format.GetPointer(), exif));
  EXPECT_FALSE(Cast<ExifInterface>(format));
  Result<Int> called = ExifCaller(format.GetPointer()).GetExifDictionary();
  ASSERT_TRUE(called.IsError());
  EXPECT_TRUE(IsErrorOfClass(called.GetError(), g_NullptrErrorObject));
}

TEST_F(HostCatalogueTest, AnUnresolvedStaticInterfaceCalledInTheModuleOutputsItsLinesAndGivesNull) {
  for (const char* id : {"vorna.Misc#1", "vorna.reflection.Proxy#1", "vorna.IoTextParserInterface#1"}) {
    StaticInterfaceRecord& record = *_records.statics[id].at(0);
    EXPECT_FALSE(record.IsResolved()) << id;
    Console::Clear();
    auto entry = reinterpret_cast<UInt (*)()>(record.table[record.count - 1]);
    EXPECT_EQ(entry(), 0u) << id;
    std::vector<std::string> lines = Console::Lines();
    ASSERT_EQ(lines.size(), 3u) << Console::Text();
    EXPECT_NE(lines[0].find("Method invocation of unresolvable interface"), std::string::npos);
    EXPECT_NE(lines[1].find(id), std::string::npos);
    EXPECT_NE(lines[2].find("Stop"), std::string::npos);
  }
}

TEST_F(HostCatalogueTest, AStaticInterfaceWithAFallbackAnswersWithoutTheHost) {
  StaticInterfaceRecord& record = *_records.statics["vorna.PerformanceMonitorInterface#1"].at(0);
  EXPECT_FALSE(record.IsResolved());
  Console::Clear();
  auto entry = reinterpret_cast<UInt (*)()>(record.table[0]);
  EXPECT_EQ(entry(), 0u);
  EXPECT_EQ(Console::Text(), "");
  EXPECT_NE(record.table[0], reinterpret_cast<void*>(entry)) << "the fallback filled the table";
}

TEST_F(HostCatalogueTest, AnUnresolvedObjectGivesTheStaticNullValue) {
  EntityRecord* machine = _records.objects["vorna.LocalMachineClass"].at(0);
  auto& use = *static_cast<ObjectUseRecord*>(machine);
  EXPECT_FALSE(use.IsResolved());
  EXPECT_EQ(use.valueSlot, nullptr);
  const int staticNull = 0;
  EXPECT_EQ(LookupObjectValue(use, &staticNull), &staticNull);
  EntityRecord* converterBase = _records.objects["vorna.MediaConverterBaseClass"].at(0);
  EXPECT_NE(LookupObjectValue(*static_cast<ObjectUseRecord*>(converterBase), &staticNull), &staticNull);
}

TEST_F(HostCatalogueTest, TheHostResolvesWhatItServesAndReportsTheRest) {
  host::ModuleDeclarations declared = host::DescribeDeclarations(_module);
  EXPECT_EQ(declared.interfaces.size(), 166u);
  EXPECT_EQ(declared.resourceIds.size(), 193u);
  std::map<std::string, Bool> interfaces;
  for (const auto& entity : declared.interfaces) interfaces[entity.id] = entity.resolved;
  EXPECT_TRUE(interfaces["vorna.MediaConverterInterface#1"]);
  EXPECT_TRUE(interfaces["vorna.System#1"]);
  EXPECT_TRUE(interfaces["vorna.NullptrErrorInterface#1"]);
  EXPECT_FALSE(interfaces["vorna.WriteArchiveInterface#1"]);
  EXPECT_FALSE(interfaces["vorna.UuidInterface#1"]);
  for (const auto& entity : declared.resourceIds) EXPECT_TRUE(entity.resolved) << entity.id;
}

TEST(HostCatalogueLoadTest, LoadingAndUnloadingTwiceBalancesEveryStartUp) {
  TesselPlatformCounters before = TesselPlatformGetCounters();
  for (int round = 0; round < 2; ++round) {
    Result<host::LoadedModule*> loaded = host::LoadModule("net.vorna.tessel_reel");
    ASSERT_FALSE(loaded.IsError());
    host::UnloadModule(loaded.GetValue());
  }
  TesselPlatformCounters after = TesselPlatformGetCounters();
  EXPECT_EQ(after.mfStartupCalls - before.mfStartupCalls, 4);
  EXPECT_EQ(after.mfShutdownCalls - before.mfShutdownCalls, 4);
  EXPECT_EQ(after.aviInitCalls - before.aviInitCalls, 2);
  EXPECT_EQ(after.aviExitCalls - before.aviExitCalls, 2);
}

}  // namespace
}  // namespace vorna
