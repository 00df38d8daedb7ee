#include "providers/providers.h"

#include <cstring>
#include <mutex>
#include <vector>

#include "vorna/staticinterface.h"

namespace vorna::host {

namespace {

std::mutex g_mutex;
std::vector<Provider> g_providers;

// The common stubs of an entry whose interface is not served. They take no arguments
// and give the null value of their return class in the return register, which is what
// a caller of any signature of that class reads.
void NothingStub() {}
UInt WordStub() { return 0; }
Float64 Float64Stub() { return 0.0; }

void* CommonStubFor(UChar returnClass) {
  switch (returnClass) {
    case returnclass::WORD: return reinterpret_cast<void*>(&WordStub);
    case returnclass::FLOAT64: return reinterpret_cast<void*>(&Float64Stub);
    default: return reinterpret_cast<void*>(&NothingStub);
  }
}

}  // namespace

void RegisterProvider(const Char* id, const void* table, Int count) {
  std::lock_guard lock(g_mutex);
  g_providers.push_back({id, static_cast<void* const*>(table), count});
}

const Provider* FindProvider(const Id& id) {
  std::lock_guard lock(g_mutex);
  for (const Provider& p : g_providers)
    if (std::strcmp(p.id, id.GetCString()) == 0) return &p;
  return nullptr;
}

void ClearProviders() {
  std::lock_guard lock(g_mutex);
  g_providers.clear();
}

Bool ResolveStaticInterface(StaticInterfaceRecord* record) {
  const Provider* provider = FindProvider(record->id);
  if (!provider || provider->count != record->count) return false;
  for (Int i = 0; i < record->count; ++i)
    if (provider->table[i]) record->table[i] = provider->table[i];
  record->state = 1;
  return true;
}

void FillCommonStubs(StaticInterfaceRecord*, void** table, const UChar* returnClasses, Int count) {
  for (Int i = 0; i < count; ++i)
    if (returnClasses[i] != returnclass::OWN_STUB) table[i] = CommonStubFor(returnClasses[i]);
}

}  // namespace vorna::host
