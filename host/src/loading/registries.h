// The named registries (extension points). A published object with a joined id
// "registry:member" lives in that registry under its member; one with a plain id lives
// in the registry of plain ids. Entries keep their address until they are erased, so
// value slots may point at them.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "vorna/data.h"

namespace vorna {

class ExtensionPointHandle {
 public:
  struct Entry {
    Id key;
    Data value;
  };
  Id id;
  std::vector<std::unique_ptr<Entry>> entries;
};

}  // namespace vorna

namespace vorna::host {

inline constexpr const Char* PLAIN_ID_REGISTRY = "vorna.PublishedObjects";

// Creates the registries the host serves; called at start.
void CreateRegistries();
void DestroyRegistries();
ExtensionPointHandle* CreateRegistry(const Char* id);

// The value published under a plain or joined id, or null.
const Data* FindPublished(const Id& id);
// Enters a value under a plain or joined id.
Result<void> Publish(const Id& id, const Data& value);
void Unpublish(const Id& id);

}  // namespace vorna::host
