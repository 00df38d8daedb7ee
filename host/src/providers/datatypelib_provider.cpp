// vorna.DataTypeLib#1 as the host serves it: block types, made once per element type
// and kept until the host stops. A block is two words, address and count, copied as
// they are: it views elements that its owner keeps alive.
#include <cstring>
#include <map>
#include <memory>
#include <mutex>
#include <string>

#include "providers/host_services.h"
#include "providers/providers.h"
#include "vorna/datatypelib.h"

namespace vorna::host {

namespace {

struct BlockValue {
  const void* data;
  Int count;
};

void Construct(void* value) { *static_cast<BlockValue*>(value) = {nullptr, 0}; }
void Destruct(void*) {}
void MoveInto(void* destination, void* source) { std::memcpy(destination, source, sizeof(BlockValue)); }
Bool CopyInto(void* destination, const void* source) {
  std::memcpy(destination, source, sizeof(BlockValue));
  return true;
}

struct BlockType {
  std::string id;
  DataType type;
};

std::mutex g_mutex;
std::map<const DataType*, std::unique_ptr<BlockType>> g_blockTypes;

const DataType* GetBlockType(const DataType* element) {
  if (!element) return nullptr;
  std::lock_guard lock(g_mutex);
  auto& entry = g_blockTypes[element];
  if (!entry) {
    entry = std::make_unique<BlockType>();
    entry->id = std::string("vorna.ParametricTypes:Block<") + element->id.GetCString() + ">";
    entry->type = DataType{&Construct, &Destruct, &MoveInto, &CopyInto, Id(entry->id.c_str()),
                           Int(sizeof(BlockValue)), nullptr, 0};
  }
  return &entry->type;
}

DataTypeLib::Table MakeTable() {
  DataTypeLib::Table table{};
  table.GetBlockType = &GetBlockType;
  return table;
}

const DataTypeLib::Table g_table = MakeTable();

}  // namespace

void ForgetBlockTypes() {
  std::lock_guard lock(g_mutex);
  g_blockTypes.clear();
}

void RegisterDataTypeLibProvider() { RegisterProvider(DataTypeLib::ID, &g_table, DataTypeLib::COUNT); }

}  // namespace vorna::host
