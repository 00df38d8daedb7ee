#include "loading/interface_registry.h"

#include <memory>
#include <mutex>

namespace vorna::host {

namespace {

std::recursive_mutex g_mutex;
std::vector<std::unique_ptr<InterfaceInfo>> g_interfaces;
Int g_nextOffset = METHOD_TABLE_HEADER;

// Interfaces that the frameworks' headers declare and that no class of this host
// implements: a module's records of them stay unresolved, so that an object never
// passes their test and a call through them gives the null result. Every other
// interface, the frameworks' and a module's own, gets its stretch when first seen.
constexpr const Char* UNSERVED[] = {
    "vorna.AskPasswordInterface#1",          "vorna.CombinerInterface#1",
    "vorna.DataDictionaryReferenceObjectInterface#1", "vorna.DataFormatBaseReaderInterface#1",
    "vorna.DataFormatBaseWriterInterface#1", "vorna.DataFormatReaderInterface#1",
    "vorna.DataFormatWriterInterface#1",     "vorna.DataSerializeInterface#1",
    "vorna.DataSerializeReaderInterface#1",  "vorna.DataSerializeWriterInterface#1",
    "vorna.ExecutionInterface#1",            "vorna.ExifInterface#1",
    "vorna.FactoryInterface#1",              "vorna.FunctionBaseInterface#1",
    "vorna.FunctionSignatureInterface#1",    "vorna.GenericFunctionInterface#1",
    "vorna.ImageBaseInterface#1",            "vorna.ImageChannelInterface#1",
    "vorna.ImageInterface#1",                "vorna.ImageLayerInterface#1",
    "vorna.ImagePixelDeepImageStorageInterface#1", "vorna.ImageTextureInterface#1",
    "vorna.InOutputStreamInterface#1",       "vorna.IoDualInOutputStreamInterface#1",
    "vorna.IoPipeInOutputStreamInterface#1", "vorna.MachineInterface#1",
    "vorna.ObservableBaseInterface#1",       "vorna.PixelFormatDynamicInterface#1",
    "vorna.PixelFormatIndexedColorInterface#1", "vorna.ReadArchiveInterface#1",
    "vorna.SystemProcessKilledErrorInterface#1", "vorna.SystemProcessObjectInterface#1",
    "vorna.SystemProcessOperationErrorInterface#1", "vorna.WrappedInputStreamInterface#1",
    "vorna.WrappedStreamInterface#1",        "vorna.WriteArchiveInterface#1",
};

Bool IsServed(const Id& id) {
  for (const Char* unserved : UNSERVED)
    if (id == Id(unserved)) return false;
  return true;
}

std::vector<InterfaceRecord*> BasesOf(const InterfaceRecord* record) {
  std::vector<InterfaceRecord*> bases;
  if (!record->base) return bases;
  if (record->flags & entityflags::SINGLE_BASE) {
    bases.push_back(const_cast<InterfaceRecord*>(record->SingleBase()));
  } else {
    for (auto* const* base = record->BaseArray(); *base; ++base) bases.push_back(const_cast<InterfaceRecord*>(*base));
  }
  return bases;
}

InterfaceInfo* Find(const Id& id) {
  for (auto& info : g_interfaces)
    if (info->id == id) return info.get();
  return nullptr;
}

}  // namespace

const InterfaceInfo* ResolveInterface(InterfaceRecord* record) {
  std::lock_guard lock(g_mutex);
  if (!IsServed(record->id)) return nullptr;
  InterfaceInfo* info = Find(record->id);
  if (!info) {
    auto created = std::make_unique<InterfaceInfo>();
    if (!created->id.Init(record->id.GetCString())) return nullptr;
    created->size = record->size;
    for (InterfaceRecord* base : BasesOf(record)) {
      const InterfaceInfo* baseInfo = ResolveInterface(base);
      if (!baseInfo) return nullptr;
      created->bases.push_back(baseInfo);
    }
    created->offset = g_nextOffset;
    g_nextOffset += (record->size + 7) & ~Int(7);
    info = created.get();
    g_interfaces.push_back(std::move(created));
  } else if (info->size != record->size) {
    return nullptr;
  }
  record->offset = info->offset;
  record->state = 1;
  return info;
}

}  // namespace vorna::host
