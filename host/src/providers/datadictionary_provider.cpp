// vorna.DataDictionaryInterface#1 as the host serves it: a small array of entries in
// insertion order. Keys match when they have the same type and the same value: an
// InternedId by the identity of its interned name, an Id by its text, anything else by
// its bytes.
#include <cstring>
#include <new>

#include "providers/host_services.h"
#include "providers/providers.h"
#include "vorna/datadictionary.h"
#include "vorna/errorbase.h"

namespace vorna::host {

namespace {

constexpr SourceLocation DICTIONARY_LOCATION{"host/datadictionary", 1, 0};

struct Entry {
  Data key;
  Data value;
};

struct DictionaryBlock {
  BaseArray<Entry> entries;
};

DictionaryBlock* AsDictionary(void* block) { return static_cast<DictionaryBlock*>(block); }
const DictionaryBlock* AsDictionary(const void* block) { return static_cast<const DictionaryBlock*>(block); }

Bool KeysEqual(const Data& stored, const ConstDataPtr& key) {
  if (stored.GetType() != key.type) return false;
  if (key.type == DataTypeOf<Id>()) return *static_cast<const Id*>(stored.GetAddress()) == *static_cast<const Id*>(key.address);
  return std::memcmp(stored.GetAddress(), key.address, size_t(key.type->size)) == 0;
}

Int IndexOf(const DictionaryBlock* dictionary, const ConstDataPtr& key) {
  for (Int i = 0; i < dictionary->entries.GetCount(); ++i)
    if (KeysEqual(dictionary->entries[i].key, key)) return i;
  return -1;
}

void* Alloc(const SourceLocation& location) {
  void* block = System::AllocCounted(sizeof(DictionaryBlock), location);
  return block ? new (block) DictionaryBlock() : nullptr;
}

void Free(void* block) {
  AsDictionary(block)->~DictionaryBlock();
  System::FreeCounted(block);
}

Bool CopyEntry(BaseArray<Entry>& to, const Entry& entry) {
  Entry* copy = to.Append(Entry{});
  if (!copy) return false;
  copy->key = entry.key;
  copy->value = entry.value;
  return copy->key.IsPopulated() == entry.key.IsPopulated() && copy->value.IsPopulated() == entry.value.IsPopulated();
}

void* Clone(const void* source, const SourceLocation& location) {
  void* block = Alloc(location);
  if (!block) return nullptr;
  for (const Entry& entry : AsDictionary(source)->entries) {
    if (!CopyEntry(AsDictionary(block)->entries, entry)) {
      Free(block);
      return nullptr;
    }
  }
  return block;
}

Result<void> Set(void* block, const ConstDataPtr& key, const ForwardingDataPtr& value) {
  if (!key.type) return CreateError(DICTIONARY_LOCATION, 2);
  DictionaryBlock* dictionary = AsDictionary(block);
  Int index = IndexOf(dictionary, key);
  Data newValue = value.ToData();
  if (value.type && newValue.IsEmpty()) return CreateError(DICTIONARY_LOCATION, 0);
  if (index >= 0) {
    dictionary->entries[index].value = std::move(newValue);
    return OK;
  }
  Entry entry;
  if (!entry.key.SetValue(key.type, key.address)) return CreateError(DICTIONARY_LOCATION, 0);
  entry.value = std::move(newValue);
  if (!dictionary->entries.Append(std::move(entry))) return CreateError(DICTIONARY_LOCATION, 0);
  return OK;
}

Result<Data> Get(const void* block, const ConstDataPtr& key) {
  const DictionaryBlock* dictionary = AsDictionary(block);
  Int index = IndexOf(dictionary, key);
  if (index < 0) return CreateError(DICTIONARY_LOCATION, 3);
  Data value = dictionary->entries[index].value;
  if (dictionary->entries[index].value.IsPopulated() && value.IsEmpty()) return CreateError(DICTIONARY_LOCATION, 0);
  return value;
}

Bool Erase(void* block, const ConstDataPtr& key) {
  auto& entries = AsDictionary(block)->entries;
  Int index = IndexOf(AsDictionary(block), key);
  if (index < 0) return false;
  for (Int i = index; i + 1 < entries.GetCount(); ++i) entries[i] = std::move(entries[i + 1]);
  return entries.SetCount(entries.GetCount() - 1);
}

Int GetCount(const void* block) { return AsDictionary(block)->entries.GetCount(); }

const Data* GetEntry(const void* block, Int index, const Data** key) {
  const auto& entries = AsDictionary(block)->entries;
  if (index < 0 || index >= entries.GetCount()) return nullptr;
  if (key) *key = &entries[index].key;
  return &entries[index].value;
}

void Reset(void* block) { AsDictionary(block)->entries.Reset(); }

DataDictionaryInterface::Table MakeTable() {
  DataDictionaryInterface::Table table{};
  table.Free = &Free;
  table.Alloc = &Alloc;
  table.Clone = &Clone;
  table.Set = &Set;
  table.Get = &Get;
  table.Erase = &Erase;
  table.GetCount = &GetCount;
  table.GetEntry = &GetEntry;
  table.Reset = &Reset;
  return table;
}

const DataDictionaryInterface::Table g_table = MakeTable();

}  // namespace

void RegisterDataDictionaryProvider() {
  RegisterProvider(DataDictionaryInterface::ID, &g_table, DataDictionaryInterface::COUNT);
}

}  // namespace vorna::host
