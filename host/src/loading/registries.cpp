// vorna.ExtensionPointInterface#1 and the host's registries.
#include "loading/registries.h"

#include <algorithm>
#include <cstring>
#include <mutex>
#include <shared_mutex>
#include <string>

#include "loading/loader.h"
#include "providers/host_services.h"
#include "providers/providers.h"
#include "vorna/errorbase.h"
#include "vorna/extensionpoint.h"
#include "vorna_host.h"

namespace vorna::host {

namespace {

constexpr SourceLocation REGISTRY_LOCATION{"host/registries", 1, 0};

std::shared_mutex g_mutex;
std::vector<std::unique_ptr<ExtensionPointHandle>> g_registries;

const Char* const KNOWN_REGISTRIES[] = {
    PLAIN_ID_REGISTRY, "vorna.Classes", "vorna.DataTypes", "vorna.ParametricTypes", "vorna.FileFormats",
    "vorna.FileFormatHandlers", "vorna.ImageSavers", "vorna.IoHandlers", "vorna.StringEncodings",
    "vorna.StringDecodings", "vorna.StreamConversions", "vorna.PixelFormats", "vorna.ColorProfiles"};

ExtensionPointHandle* FindLocked(const Id& id) {
  for (auto& registry : g_registries)
    if (registry->id == id) return registry.get();
  return nullptr;
}

ExtensionPointHandle* Find(const Id& id) {
  std::shared_lock lock(g_mutex);
  return FindLocked(id);
}

const Data* FindEntry(const ExtensionPointHandle* point, const Id& key) {
  std::shared_lock lock(g_mutex);
  for (auto& entry : point->entries)
    if (entry->key == key) return &entry->value;
  return nullptr;
}

Result<void> Insert(ExtensionPointHandle* point, const Id& key, const Data& value) {
  auto entry = std::unique_ptr<ExtensionPointHandle::Entry>(new (std::nothrow) ExtensionPointHandle::Entry());
  if (!entry || !entry->key.Init(key.GetCString(), key.GetLength())) return CreateError(REGISTRY_LOCATION, 0);
  entry->value = value;
  if (value.IsPopulated() && entry->value.IsEmpty()) return CreateError(REGISTRY_LOCATION, 0);
  std::unique_lock lock(g_mutex);
  for (auto& present : point->entries)
    if (present->key == key) return RaiseError(g_IllegalStateErrorObject, REGISTRY_LOCATION);
  point->entries.push_back(std::move(entry));
  return OK;
}

void Erase(ExtensionPointHandle* point, const Id& key) {
  std::unique_ptr<ExtensionPointHandle::Entry> removed;
  {
    std::unique_lock lock(g_mutex);
    for (auto it = point->entries.begin(); it != point->entries.end(); ++it) {
      if ((*it)->key == key) {
        removed = std::move(*it);
        point->entries.erase(it);
        break;
      }
    }
  }
  if (removed) ForgetValue(removed->value.GetAddress());
}

Int GetCount(const ExtensionPointHandle* point) {
  std::shared_lock lock(g_mutex);
  return Int(point->entries.size());
}

const Data* GetEntry(const ExtensionPointHandle* point, Int index, const Id** key) {
  std::shared_lock lock(g_mutex);
  if (index < 0 || index >= Int(point->entries.size())) return nullptr;
  if (key) *key = &point->entries[size_t(index)]->key;
  return &point->entries[size_t(index)]->value;
}

ExtensionPoint::Table MakeTable() {
  ExtensionPoint::Table table{};
  table.Find = &Find;
  table.FindEntry = &FindEntry;
  table.Insert = &Insert;
  table.Erase = &Erase;
  table.GetCount = &GetCount;
  table.GetEntry = &GetEntry;
  return table;
}

const ExtensionPoint::Table g_table = MakeTable();

// The registry and member of an id: its own parts if joined, else the plain-id registry.
ExtensionPointHandle* RegistryOf(const Id& id, Id& member) {
  Id registry;
  if (!SplitMemberId(id, registry, member)) {
    member = id;
    return Find(Id(PLAIN_ID_REGISTRY));
  }
  return Find(registry);
}

// The same for a lookup, with ids that borrow the text of id, so that a lookup needs no
// memory: without it, the split would fail and the id be looked for as a plain one.
// member lives no longer than id.
ExtensionPointHandle* FindRegistryOf(const Id& id, Id& member) {
  const Char* text = id.GetCString();
  const Char* colon = text ? std::strchr(text, ':') : nullptr;
  if (!colon) {
    member = id;
    return Find(Id(PLAIN_ID_REGISTRY));
  }
  member = Id(colon + 1);
  return Find(Id(std::string(text, colon).c_str()));
}

}  // namespace

ExtensionPointHandle* CreateRegistry(const Char* id) {
  std::unique_lock lock(g_mutex);
  if (ExtensionPointHandle* present = FindLocked(Id(id))) return present;
  auto registry = std::make_unique<ExtensionPointHandle>();
  registry->id.Init(id);
  g_registries.push_back(std::move(registry));
  return g_registries.back().get();
}

void CreateRegistries() {
  for (const Char* id : KNOWN_REGISTRIES) CreateRegistry(id);
}

// The registries of types go last: the values of every other registry are of types
// that live there.
void DestroyRegistries() {
  std::vector<std::unique_ptr<ExtensionPointHandle>> registries;
  {
    std::unique_lock lock(g_mutex);
    registries.swap(g_registries);
  }
  auto isTypeRegistry = [](const std::unique_ptr<ExtensionPointHandle>& r) {
    return r->id == Id("vorna.DataTypes") || r->id == Id("vorna.ParametricTypes");
  };
  std::stable_partition(registries.begin(), registries.end(), [&](auto& r) { return !isTypeRegistry(r); });
  for (auto& registry : registries) registry.reset();
}

// A plain id names a published object or, failing that, a class in vorna.Classes.
const Data* FindPublished(const Id& id) {
  Id member;
  ExtensionPointHandle* registry = FindRegistryOf(id, member);
  const Data* value = registry ? FindEntry(registry, member) : nullptr;
  if (!value && registry && registry->id == Id(PLAIN_ID_REGISTRY))
    if (ExtensionPointHandle* classes = Find(Id("vorna.Classes"))) value = FindEntry(classes, id);
  return value;
}

Result<void> Publish(const Id& id, const Data& value) {
  Id member;
  ExtensionPointHandle* registry = RegistryOf(id, member);
  if (!registry) return RaiseError(g_IllegalArgumentErrorObject, REGISTRY_LOCATION);
  return Insert(registry, member, value);
}

void Unpublish(const Id& id) {
  Id member;
  if (ExtensionPointHandle* registry = FindRegistryOf(id, member)) Erase(registry, member);
}

std::vector<std::string> ListRegistry(const std::string& id) {
  std::vector<std::string> members;
  ExtensionPointHandle* registry = Find(Id(id.c_str()));
  if (!registry) return members;
  std::shared_lock lock(g_mutex);
  for (auto& entry : registry->entries) members.emplace_back(entry->key.GetCString());
  return members;
}

void RegisterExtensionPointProvider() { RegisterProvider(ExtensionPoint::ID, &g_table, ExtensionPoint::COUNT); }

}  // namespace vorna::host
