#include "loading/interface_registry.h"

#include <memory>
#include <mutex>

namespace vorna::host {

namespace {

std::recursive_mutex g_mutex;
std::vector<std::unique_ptr<InterfaceInfo>> g_interfaces;
Int g_nextOffset = METHOD_TABLE_HEADER;

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
