// vorna.DataDescriptionInterface#1 as the host serves it: entries in the order added.
#include <new>

#include "providers/host_services.h"
#include "providers/providers.h"
#include "vorna/datadescription.h"
#include "vorna/errorbase.h"

namespace vorna::host {

namespace {

constexpr SourceLocation DESCRIPTION_LOCATION{"host/datadescription", 1, 0};

struct DescriptionBlock {
  BaseArray<DataDictionary> entries;
};

DescriptionBlock* AsDescription(void* block) { return static_cast<DescriptionBlock*>(block); }
const DescriptionBlock* AsDescription(const void* block) { return static_cast<const DescriptionBlock*>(block); }

void* Alloc(const SourceLocation& location) {
  void* block = System::AllocCounted(sizeof(DescriptionBlock), location);
  return block ? new (block) DescriptionBlock() : nullptr;
}

void Free(void* block) {
  AsDescription(block)->~DescriptionBlock();
  System::FreeCounted(block);
}

void* Clone(const void* source, const SourceLocation& location) {
  void* block = Alloc(location);
  const auto& from = AsDescription(source)->entries;
  if (block && !AsDescription(block)->entries.Append(from.GetData(), from.GetCount())) {
    Free(block);
    return nullptr;
  }
  return block;
}

Result<void> Add(void* block, const DataDictionary& entry) {
  if (!AsDescription(block)->entries.Append(entry)) return CreateError(DESCRIPTION_LOCATION, 0);
  return OK;
}

Int GetCount(const void* block) { return AsDescription(block)->entries.GetCount(); }

const DataDictionary* GetEntry(const void* block, Int index) {
  const auto& entries = AsDescription(block)->entries;
  return index >= 0 && index < entries.GetCount() ? &entries[index] : nullptr;
}

DataDescriptionInterface::Table MakeTable() {
  DataDescriptionInterface::Table table{};
  table.Free = &Free;
  table.Alloc = &Alloc;
  table.Clone = &Clone;
  table.Add = &Add;
  table.GetCount = &GetCount;
  table.GetEntry = &GetEntry;
  return table;
}

const DataDescriptionInterface::Table g_table = MakeTable();

}  // namespace

void RegisterDataDescriptionProvider() {
  RegisterProvider(DataDescriptionInterface::ID, &g_table, DataDescriptionInterface::COUNT);
}

}  // namespace vorna::host
